// SPDX-License-Identifier: Zlib
#include "OverlayPanels.h"

#include "MenuControls.h"
#include "Scene.h"

#include <imgui.h>
#include <string>

namespace InputLab {

namespace {

constexpr float margin = 24;
// Above the cells and their names.
constexpr float bottomClearance = 100;
constexpr ImGuiWindowFlags panelFlags =
    ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoResize | ImGuiWindowFlags_NoCollapse |
    ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_AlwaysAutoResize |
    ImGuiWindowFlags_NoFocusOnAppearing | ImGuiWindowFlags_NoNav;

const ImU32 labelColour = IM_COL32(235, 235, 240, 255);
const ImU32 darkLabelColour = IM_COL32(20, 20, 24, 255);
const ImVec4 consumedColour{1.0F, 0.65F, 0.2F, 1.0F};
const ImVec4 passedOnColour{0.85F, 0.9F, 0.95F, 1.0F};
const ImVec4 otherLevelColour{0.5F, 0.5F, 0.55F, 1.0F};
const ImVec4 notReachedColour{0.9F, 0.4F, 0.4F, 1.0F};

void CentredText(ImDrawList& list, const Area& area, ImU32 colour, const char* text) {
    const ImVec2 size = ImGui::CalcTextSize(text);
    list.AddText(ImVec2(area.x + (area.width - size.x) / 2, area.y + (area.height - size.y) / 2),
                 colour, text);
}

void DrawLabels(const LabState& state, Window::Resolution drawable) {
    ImDrawList& list = *ImGui::GetForegroundDrawList();
    for (std::size_t index = 0; index < CellCount; ++index) {
        const auto cell = static_cast<Cell>(index);
        Area above = CellArea(cell, drawable);
        above.y -= above.height / 2 + 4;
        above.height /= 2;
        CentredText(list, above, labelColour, CellName(cell));
    }
    if (state.menuOpen) {
        for (int index = 0; index < static_cast<int>(MenuItem::Count); ++index) {
            const auto item = static_cast<MenuItem>(index);
            CentredText(list, MenuItemArea(item, drawable),
                        state.menuSelection == item ? darkLabelColour : labelColour,
                        MenuItemName(item));
        }
    }
    const Area bar = TextBarArea(drawable);
    const std::string text = state.textInput       ? "Typing: " + ToUtf8(state.typed) + "_"
                             : state.typed.empty() ? std::string("F2 types text here")
                                                   : "Typed: " + ToUtf8(state.typed);
    const float height = ImGui::GetTextLineHeight();
    list.AddText(ImVec2(bar.x + 8, bar.y + (bar.height - height) / 2),
                 state.textInput ? darkLabelColour : labelColour, text.c_str());
}

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + name;
    return text.empty() ? "none" : text;
}

void DrawStatus(const LabState& state, const WalkTrace& walks, Window::Resolution drawable) {
    ImGui::SetNextWindowPos(ImVec2(drawable.width - margin, margin + 36), ImGuiCond_Always,
                            ImVec2(1, 0));
    ImGui::Begin("State", nullptr, panelFlags);
    ImGui::Text("Modal level %d: %s", state.modalLevel,
                state.menuOpen ? "the menu's keys only" : "the game's keys");
    ImGui::Text("Held: %s", Joined(walks.Held()).c_str());
    ImGui::Text("Modifiers: %s", Joined(state.heldModes).c_str());
    ImGui::Text("Text input: %s", state.textInput ? "on" : "off");
    ImGui::End();
}

void DrawEcho(const EventEcho& echo, Window::Resolution drawable) {
    ImGui::SetNextWindowPos(ImVec2(margin, drawable.height - bottomClearance), ImGuiCond_Always,
                            ImVec2(0, 1));
    ImGui::Begin("Echo: the last callbacks", nullptr, panelFlags);
    if (echo.Recent().empty())
        ImGui::TextDisabled("no callback yet");
    for (const std::string& line : echo.Recent())
        ImGui::TextUnformatted(line.c_str());
    ImGui::End();
}

ImVec4 FateColour(WalkStep::Fate fate) {
    switch (fate) {
    case WalkStep::Fate::Consumed:
        return consumedColour;
    case WalkStep::Fate::PassedOn:
        return passedOnColour;
    case WalkStep::Fate::OtherLevel:
        return otherLevelColour;
    case WalkStep::Fate::NotReached:
        break;
    }
    return notReachedColour;
}

void DrawWalk(const WalkTrace& walks, Window::Resolution drawable) {
    ImGui::SetNextWindowPos(ImVec2(drawable.width - margin, drawable.height - bottomClearance),
                            ImGuiCond_Always, ImVec2(1, 1));
    ImGui::Begin("Priority walk of the last key or button", nullptr, panelFlags);
    const auto walk = walks.LastWalk();
    if (!walk) {
        ImGui::TextDisabled("no key or button yet");
        ImGui::End();
        return;
    }
    if (walk->level)
        ImGui::Text("%s at modal level %d", walk->event.c_str(), *walk->level);
    else
        ImGui::Text("%s (buttons answer at every level)", walk->event.c_str());
    if (ImGui::BeginTable("steps", 4, ImGuiTableFlags_SizingFixedFit)) {
        ImGui::TableSetupColumn("priority");
        ImGui::TableSetupColumn("level");
        ImGui::TableSetupColumn("reactor");
        ImGui::TableSetupColumn("");
        ImGui::TableHeadersRow();
        for (const WalkStep& step : walk->steps) {
            ImGui::TableNextRow();
            ImGui::TableNextColumn();
            ImGui::Text("%u", static_cast<unsigned int>(step.priority));
            ImGui::TableNextColumn();
            if (step.level)
                ImGui::Text("%d", *step.level);
            else
                ImGui::TextUnformatted("any");
            ImGui::TableNextColumn();
            ImGui::TextUnformatted(step.owner.c_str());
            ImGui::TableNextColumn();
            ImGui::TextColored(FateColour(step.fate), "%s", WalkTrace::FateText(step).c_str());
        }
        ImGui::EndTable();
    }
    ImGui::TextUnformatted(walk->stopped ? "The walk stopped after the consumer's priority."
                                         : "The walk reached every reactor of its level.");
    ImGui::End();
}

} // namespace

void DrawPanels(const LabState& state, const EventEcho& echo, const WalkTrace& walks,
                Window::Resolution drawable) {
    if (drawable.width == 0 || drawable.height == 0)
        return;
    DrawLabels(state, drawable);
    DrawStatus(state, walks, drawable);
    DrawEcho(echo, drawable);
    DrawWalk(walks, drawable);
}

} // namespace InputLab
