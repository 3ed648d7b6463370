// SPDX-License-Identifier: Zlib
#include "Scene.h"

#include <algorithm>
#include <array>

namespace InputLab {

namespace {

constexpr std::array<Colour, 4> palette{{
    {32, 36, 44},  // slate: nothing chosen yet
    {24, 48, 112}, // Digit1
    {24, 96, 48},  // Digit2
    {112, 32, 32}, // Digit3
}};

constexpr Colour cellDark{64, 64, 72};
constexpr Colour keyLit{250, 210, 60};
constexpr Colour modeLit{90, 220, 120};
constexpr Colour buttonLit{240, 100, 90};
constexpr Colour wheelUpGlow{255, 150, 40};
constexpr Colour wheelDownGlow{170, 90, 255};
constexpr Colour textBarOff{56, 56, 64};
constexpr Colour textBarOn{40, 170, 190};
constexpr Colour menuPanel{20, 20, 24};
constexpr Colour menuItem{70, 70, 84};
constexpr Colour menuSelected{230, 230, 240};

constexpr int margin = 24;
constexpr int cellSide = 40;
constexpr int cellGap = 8;
constexpr int groupGap = 24;
constexpr int borderWidth = 12;

/// Adds a rectangle cut to the drawable; what lies wholly outside is dropped.
class Painter {
public:
    Painter(Scene& scene, Window::Resolution drawable) : scene(scene), drawable(drawable) {}

    void Fill(int x, int y, int width, int height, Colour colour) {
        const int left = std::max(x, 0);
        const int top = std::max(y, 0);
        const int right = std::min(x + width, static_cast<int>(drawable.width));
        const int bottom = std::min(y + height, static_cast<int>(drawable.height));
        if (right <= left || bottom <= top)
            return;
        scene.rectangles.push_back({left, top, static_cast<std::uint32_t>(right - left),
                                    static_cast<std::uint32_t>(bottom - top), colour});
    }

private:
    Scene& scene;
    Window::Resolution drawable;
};

Colour LitColour(Cell cell) {
    if (cell < Cell::LeftShift)
        return keyLit;
    if (cell < Cell::LeftButton)
        return modeLit;
    return buttonLit;
}

constexpr int menuItemWidth = 280;
constexpr int menuItemHeight = 48;
constexpr int menuItemGap = 16;
constexpr int menuCount = static_cast<int>(MenuItem::Count);
constexpr int menuPanelWidth = menuItemWidth + 2 * menuItemGap;
constexpr int menuPanelHeight = menuCount * (menuItemHeight + menuItemGap) + menuItemGap;

int MenuLeft(Window::Resolution drawable) {
    return (static_cast<int>(drawable.width) - menuPanelWidth) / 2;
}

// Above the middle, so that the overlay's panels at the bottom leave it clear.
int MenuTop(Window::Resolution drawable) {
    return std::max(static_cast<int>(drawable.height) / 2 - menuPanelHeight - 40, 2 * margin + 24);
}

void PaintCells(Painter& painter, const LabState& state, Window::Resolution drawable,
                Clock::time_point now) {
    for (std::size_t index = 0; index < CellCount; ++index) {
        const auto cell = static_cast<Cell>(index);
        const Clock::time_point last = state.lastHold[index];
        const bool lit = last != Clock::time_point{} && now - last <= HoldGlow;
        const Area area = CellArea(cell, drawable);
        painter.Fill(area.x, area.y, area.width, area.height, lit ? LitColour(cell) : cellDark);
    }
}

void PaintTextBar(Painter& painter, const LabState& state, Window::Resolution drawable) {
    // The typed characters are the overlay's: it has a font.
    const Area bar = TextBarArea(drawable);
    painter.Fill(bar.x, bar.y, bar.width, bar.height, state.textInput ? textBarOn : textBarOff);
}

void PaintMenu(Painter& painter, const LabState& state, Window::Resolution drawable) {
    painter.Fill(MenuLeft(drawable), MenuTop(drawable), menuPanelWidth, menuPanelHeight, menuPanel);
    for (int index = 0; index < menuCount; ++index) {
        const auto item = static_cast<MenuItem>(index);
        const Area area = MenuItemArea(item, drawable);
        painter.Fill(area.x, area.y, area.width, area.height,
                     state.menuSelection == item ? menuSelected : menuItem);
    }
}

void PaintWheelGlow(Painter& painter, const LabState& state, Window::Resolution drawable,
                    Clock::time_point now) {
    if (state.lastWheel == Clock::time_point{} || now - state.lastWheel > WheelGlow)
        return;
    const Colour colour = state.wheelUp ? wheelUpGlow : wheelDownGlow;
    const int width = drawable.width;
    const int height = drawable.height;
    painter.Fill(0, 0, width, borderWidth, colour);
    painter.Fill(0, height - borderWidth, width, borderWidth, colour);
    painter.Fill(0, 0, borderWidth, height, colour);
    painter.Fill(width - borderWidth, 0, borderWidth, height, colour);
}

void PaintSquare(Painter& painter, const LabState& state, Window::Resolution drawable,
                 Window::Resolution window) {
    int x = drawable.width / 2;
    int y = drawable.height / 2;
    if (state.cursorSeen && window.width > 0 && window.height > 0) {
        x = state.cursor.x * static_cast<int>(drawable.width) / window.width;
        y = state.cursor.y * static_cast<int>(drawable.height) / window.height;
    }
    const int half = static_cast<int>(SquareSide) / 2;
    painter.Fill(x - half, y - half, SquareSide, SquareSide, SquareColour);
}

} // namespace

Area CellArea(Cell cell, Window::Resolution drawable) {
    const auto index = static_cast<int>(cell);
    // A gap between keys, modifiers and buttons.
    int x = margin + index * (cellSide + cellGap);
    if (cell >= Cell::LeftShift)
        x += groupGap - cellGap;
    if (cell >= Cell::LeftButton)
        x += groupGap - cellGap;
    return {x, static_cast<int>(drawable.height) - margin - cellSide, cellSide, cellSide};
}

const char* CellName(Cell cell) {
    constexpr std::array<const char*, CellCount> names{
        "W",    "A",      "S",     "D",    "Q",    "E",      "LShift", "LCtrl",
        "LAlt", "RShift", "RCtrl", "RAlt", "Left", "Middle", "Right"};
    const auto index = static_cast<std::size_t>(cell);
    return index < names.size() ? names[index] : "?";
}

Area MenuItemArea(MenuItem item, Window::Resolution drawable) {
    const int index = static_cast<int>(item);
    return {MenuLeft(drawable) + menuItemGap,
            MenuTop(drawable) + menuItemGap + index * (menuItemHeight + menuItemGap), menuItemWidth,
            menuItemHeight};
}

Area TextBarArea(Window::Resolution drawable) {
    return {margin, margin, static_cast<int>(drawable.width) - 2 * margin, 24};
}

Colour BackgroundColour(int index) {
    if (index < 0 || index >= static_cast<int>(palette.size()))
        return palette[0];
    return palette[static_cast<std::size_t>(index)];
}

Scene BuildScene(const LabState& state, Window::Resolution drawable, Window::Resolution window,
                 Clock::time_point now) {
    Scene scene;
    scene.background = BackgroundColour(state.background);
    if (drawable.width == 0 || drawable.height == 0)
        return scene;
    Painter painter(scene, drawable);
    PaintWheelGlow(painter, state, drawable, now);
    PaintTextBar(painter, state, drawable);
    PaintCells(painter, state, drawable, now);
    if (state.menuOpen)
        PaintMenu(painter, state, drawable);
    // Last, so that the square stays visible over everything else.
    PaintSquare(painter, state, drawable, window);
    return scene;
}

} // namespace InputLab
