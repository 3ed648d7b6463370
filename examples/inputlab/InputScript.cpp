#include "InputScript.h"

#include <fstream>

namespace InputLab {

namespace {

using Kind = ScriptEvent::Kind;

/// Splits off the first word; the rest keeps its inner blanks (key names such as "Left Shift").
std::string TakeWord(std::string& rest) {
    const auto start = rest.find_first_not_of(" \t");
    if (start == std::string::npos) {
        rest.clear();
        return {};
    }
    const auto end = rest.find_first_of(" \t", start);
    std::string word = rest.substr(start, end - start);
    rest = end == std::string::npos ? std::string() : rest.substr(end + 1);
    return word;
}

std::string Trim(const std::string& text) {
    const auto start = text.find_first_not_of(" \t\r");
    if (start == std::string::npos)
        return {};
    const auto end = text.find_last_not_of(" \t\r");
    return text.substr(start, end - start + 1);
}

long long TakeNumber(std::string& rest, const char* what) {
    const std::string word = TakeWord(rest);
    std::size_t used = 0;
    long long value = 0;
    try {
        value = std::stoll(word, &used);
    } catch (const std::exception&) {
        used = 0;
    }
    if (word.empty() || used != word.size())
        throw std::invalid_argument(std::string("expected ") + what + ", found \"" + word + "\"");
    return value;
}

void ExpectEnd(const std::string& rest) {
    if (!Trim(rest).empty())
        throw std::invalid_argument("unexpected \"" + Trim(rest) + "\" at the end");
}

bool TakeDirection(std::string& rest, const char* what) {
    const std::string word = TakeWord(rest);
    if (word == "down")
        return true;
    if (word == "up")
        return false;
    throw std::invalid_argument(std::string(what) + " needs \"down\" or \"up\", found \"" + word +
                                "\"");
}

ScriptEvent ParseKey(std::string rest) {
    ScriptEvent event;
    event.kind = TakeDirection(rest, "key") ? Kind::KeyDown : Kind::KeyUp;
    const std::string name = Trim(rest);
    if (name.empty())
        throw std::invalid_argument("key needs a key name, such as a, 2, Escape or Left Shift");
    event.key = SDL_GetKeyFromName(name.c_str());
    if (event.key == SDLK_UNKNOWN)
        throw std::invalid_argument("unknown key name \"" + name + "\"");
    return event;
}

ScriptEvent ParseButton(std::string rest) {
    ScriptEvent event;
    event.kind = TakeDirection(rest, "button") ? Kind::ButtonDown : Kind::ButtonUp;
    const std::string name = TakeWord(rest);
    ExpectEnd(rest);
    if (name == "left")
        event.button = SDL_BUTTON_LEFT;
    else if (name == "right")
        event.button = SDL_BUTTON_RIGHT;
    else if (name == "middle")
        event.button = SDL_BUTTON_MIDDLE;
    else
        throw std::invalid_argument("unknown button \"" + name + "\" (left, right or middle)");
    return event;
}

ScriptEvent ParseWindow(std::string rest) {
    const std::string what = TakeWord(rest);
    ExpectEnd(rest);
    ScriptEvent event;
    if (what == "close")
        event.kind = Kind::WindowClose;
    else if (what == "minimize")
        event.kind = Kind::WindowMinimize;
    else if (what == "maximize")
        event.kind = Kind::WindowMaximize;
    else
        throw std::invalid_argument("unknown window event \"" + what +
                                    "\" (close, minimize or maximize)");
    return event;
}

ScriptEvent ParseText(const std::string& rest) {
    // The text is taken as written, inner and trailing blanks included, apart from a CR.
    std::string text = rest;
    if (!text.empty() && text.back() == '\r')
        text.pop_back();
    ScriptEvent event;
    event.kind = Kind::Text;
    if (text.empty())
        throw std::invalid_argument("text needs at least one character");
    // SDL's text event holds at most 31 bytes and a terminating NUL.
    if (text.size() >= sizeof(SDL_TextInputEvent{}.text))
        throw std::invalid_argument("text is longer than 31 bytes");
    event.text = text;
    return event;
}

} // namespace

InputScript InputScript::Load(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw ScriptError("Cannot read input script \"" + path.string() + "\"");
    return Parse(file, path.string());
}

InputScript InputScript::Parse(std::istream& input, const std::string& name) {
    InputScript script;
    unsigned long long frame = 0;
    unsigned int lineNumber = 0;
    std::string line;
    while (std::getline(input, line)) {
        ++lineNumber;
        if (Trim(line).empty() || Trim(line).front() == '#')
            continue;
        try {
            std::string rest = line;
            const std::string verb = TakeWord(rest);
            ScriptEvent event;
            if (verb == "wait") {
                const long long frames = TakeNumber(rest, "a number of frames");
                ExpectEnd(rest);
                if (frames < 0)
                    throw std::invalid_argument("wait needs 0 or more frames");
                frame += static_cast<unsigned long long>(frames);
                continue;
            }
            if (verb == "key") {
                event = ParseKey(rest);
            } else if (verb == "motion") {
                event.kind = Kind::Motion;
                event.x = static_cast<int>(TakeNumber(rest, "an x coordinate"));
                event.y = static_cast<int>(TakeNumber(rest, "a y coordinate"));
                ExpectEnd(rest);
            } else if (verb == "button") {
                event = ParseButton(rest);
            } else if (verb == "wheel") {
                event.kind = Kind::Wheel;
                event.y = static_cast<int>(TakeNumber(rest, "a number of steps"));
                ExpectEnd(rest);
                if (event.y == 0)
                    throw std::invalid_argument("wheel needs a number of steps other than 0");
            } else if (verb == "text") {
                event = ParseText(rest);
            } else if (verb == "window") {
                event = ParseWindow(rest);
            } else {
                throw std::invalid_argument("unknown event \"" + verb +
                                            "\" (key, motion, button, wheel, text, window, wait)");
            }
            script.entries.push_back({frame, lineNumber, event});
        } catch (const std::invalid_argument& problem) {
            throw ScriptError("Input script \"" + name + "\", line " + std::to_string(lineNumber) +
                              ": " + problem.what());
        }
    }
    if (input.bad())
        throw ScriptError("Cannot read input script \"" + name + "\"");
    script.length = script.entries.empty() ? 0 : script.entries.back().frame + 1;
    return script;
}

void InputScript::InjectDue(unsigned long long frame) {
    for (; next < entries.size() && entries[next].frame <= frame; ++next) {
        const ScriptEntry& entry = entries[next];
        SDL_Event event = ToSdlEvent(entry.event, cursorX, cursorY);
        if (entry.event.kind == Kind::Motion) {
            cursorX = entry.event.x;
            cursorY = entry.event.y;
        }
        if (SDL_PushEvent(&event) < 0)
            throw std::runtime_error("SDL refused a scripted event from line " +
                                     std::to_string(entry.line) + ": " + SDL_GetError());
    }
}

SDL_Event InputScript::ToSdlEvent(const ScriptEvent& source, int cursorX, int cursorY) {
    SDL_Event event{};
    switch (source.kind) {
    case Kind::KeyDown:
    case Kind::KeyUp:
        event.type = source.kind == Kind::KeyDown ? SDL_KEYDOWN : SDL_KEYUP;
        event.key.state = source.kind == Kind::KeyDown ? SDL_PRESSED : SDL_RELEASED;
        event.key.keysym.sym = source.key;
        event.key.keysym.scancode = SDL_GetScancodeFromKey(source.key);
        break;
    case Kind::Motion:
        event.type = SDL_MOUSEMOTION;
        event.motion.x = source.x;
        event.motion.y = source.y;
        event.motion.xrel = source.x - cursorX;
        event.motion.yrel = source.y - cursorY;
        break;
    case Kind::ButtonDown:
    case Kind::ButtonUp:
        event.type = source.kind == Kind::ButtonDown ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
        event.button.button = source.button;
        event.button.state = source.kind == Kind::ButtonDown ? SDL_PRESSED : SDL_RELEASED;
        event.button.clicks = 1;
        event.button.x = cursorX;
        event.button.y = cursorY;
        break;
    case Kind::Wheel:
        event.type = SDL_MOUSEWHEEL;
        event.wheel.y = source.y;
        event.wheel.direction = SDL_MOUSEWHEEL_NORMAL;
        break;
    case Kind::Text:
        event.type = SDL_TEXTINPUT;
        source.text.copy(event.text.text, sizeof(event.text.text) - 1);
        break;
    case Kind::WindowClose:
    case Kind::WindowMinimize:
    case Kind::WindowMaximize:
        event.type = SDL_WINDOWEVENT;
        event.window.event = source.kind == Kind::WindowClose      ? SDL_WINDOWEVENT_CLOSE
                             : source.kind == Kind::WindowMinimize ? SDL_WINDOWEVENT_MINIMIZED
                                                                   : SDL_WINDOWEVENT_MAXIMIZED;
        break;
    }
    return event;
}

} // namespace InputLab
