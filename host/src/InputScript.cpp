// SPDX-License-Identifier: Zlib
#include "ScriptWords.h"

#include <host/InputScript.h>
#include <host/PrintableText.h>

#include <SDL.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <limits>

namespace Host {

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
    const auto start = text.find_first_not_of(" \t");
    if (start == std::string::npos)
        return {};
    const auto end = text.find_last_not_of(" \t");
    return text.substr(start, end - start + 1);
}

/// The next word as a `Number` from `least` to `most`; `what` names it in the message, which
/// gives the range, so that a number beyond what the event can carry is refused rather than cut.
template <typename Number>
Number TakeNumber(std::string& rest, const char* what, Number least, Number most) {
    const std::string word = TakeWord(rest);
    Number value{};
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (word.empty() || error != std::errc() || stop != end || value < least || value > most)
        throw std::invalid_argument(std::string("expected ") + what + " from " +
                                    std::to_string(least) + " to " + std::to_string(most) +
                                    ", found " + Quoted(word));
    return value;
}

/// A number that fills a `Field` of an SDL event, such as a motion's x or a wheel's y.
template <typename Field> Field TakeField(std::string& rest, const char* what) {
    return TakeNumber(rest, what, std::numeric_limits<Field>::min(),
                      std::numeric_limits<Field>::max());
}

void ExpectEnd(const std::string& rest) {
    if (!Trim(rest).empty())
        throw std::invalid_argument("unexpected " + Quoted(Trim(rest)) + " at the end");
}

bool TakeDirection(std::string& rest, std::string_view what) {
    const std::string word = TakeWord(rest);
    if (const auto isDown = ScriptWords::IsDown(word))
        return *isDown;
    throw std::invalid_argument(std::string(what) + " needs \"" + std::string(ScriptWords::down) +
                                "\" or \"" + std::string(ScriptWords::up) + "\", found " +
                                Quoted(word));
}

ScriptEvent ParseKey(std::string rest) {
    ScriptEvent event;
    event.kind = TakeDirection(rest, ScriptWords::keyVerb) ? Kind::KeyDown : Kind::KeyUp;
    const std::string name = Trim(rest);
    if (name.empty())
        throw std::invalid_argument("key needs a key name, such as a, 2, Escape or Left Shift");
    event.key = SDL_GetKeyFromName(name.c_str());
    if (event.key == SDLK_UNKNOWN)
        throw std::invalid_argument("unknown key name " + Quoted(name));
    return event;
}

/// The line's last word, as `Find` (a lookup of ScriptWords) reads it; `what` and `choices` name
/// it and what it may be in the message.
template <class Find>
auto TakeLastWord(std::string& rest, const char* what, Find find, std::string (*choices)()) {
    const std::string word = TakeWord(rest);
    ExpectEnd(rest);
    const auto found = find(word);
    if (!found)
        throw std::invalid_argument("unknown " + std::string(what) + " " + Quoted(word) + " (" +
                                    choices() + ")");
    return *found;
}

ScriptEvent ParseButton(std::string rest) {
    ScriptEvent event;
    event.kind = TakeDirection(rest, ScriptWords::buttonVerb) ? Kind::ButtonDown : Kind::ButtonUp;
    event.button =
        TakeLastWord(rest, "button", ScriptWords::ButtonNumber, ScriptWords::ButtonChoices);
    return event;
}

ScriptEvent ParseWindow(std::string rest) {
    ScriptEvent event;
    event.kind =
        TakeLastWord(rest, "window event", ScriptWords::WindowKind, ScriptWords::WindowChoices);
    return event;
}

ScriptEvent ParseText(const std::string& rest) {
    // The text is taken as written, inner and trailing blanks included.
    ScriptEvent event;
    event.kind = Kind::Text;
    if (rest.empty())
        throw std::invalid_argument("text needs at least one character");
    // SDL's text event holds at most 31 bytes and a terminating NUL; a reader of it takes the
    // bytes as UTF-8.
    if (rest.size() >= sizeof(SDL_TextInputEvent{}.text))
        throw std::invalid_argument("text is longer than 31 bytes");
    if (!IsUtf8(rest))
        throw std::invalid_argument("text is not valid UTF-8: " + Quoted(rest));
    event.text = rest;
    return event;
}

/// The last frame an event may have: the script's length, one more, must still be counted.
constexpr unsigned long long lastFrame = std::numeric_limits<unsigned long long>::max() - 1;

/// The move from `from` to `to`, filled in as the window system would. Two positions at far
/// ends of Sint32 are further apart than the field can say: the move is held at its ends then.
Sint32 Relative(Sint32 to, Sint32 from) {
    const long long move = static_cast<long long>(to) - from;
    return static_cast<Sint32>(std::clamp<long long>(move, std::numeric_limits<Sint32>::min(),
                                                     std::numeric_limits<Sint32>::max()));
}

/// Set while the script pushes its own events, and while it has lines left to push.
bool injecting = false;
bool holdingBack = false;

int HoldBackSystemInput(void*, SDL_Event* event) {
    if (injecting || !holdingBack)
        return 1;
    switch (event->type) {
    case SDL_KEYDOWN:
    case SDL_KEYUP:
    case SDL_TEXTEDITING:
    case SDL_TEXTINPUT:
    case SDL_MOUSEMOTION:
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
    case SDL_MOUSEWHEEL:
        return 0;
    default:
        return 1;
    }
}

/// Clears `injecting` however the pushes end.
struct Injecting {
    Injecting() { injecting = true; }
    ~Injecting() { injecting = false; }
    Injecting(const Injecting&) = delete;
    Injecting& operator=(const Injecting&) = delete;
};

} // namespace

InputScript InputScript::Load(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw InputScriptError("Cannot read input script \"" + Printable(path.string()) + "\"");
    return Parse(file, path.string());
}

InputScript InputScript::Parse(std::istream& input, const std::string& name) {
    InputScript script;
    unsigned long long frame = 0;
    unsigned long long lineNumber = 0;
    std::string line;
    while (std::getline(input, line)) {
        ++lineNumber;
        try {
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            // SDL reads key names and text up to the first NUL: the rest would vanish unseen.
            if (line.find('\0') != std::string::npos)
                throw std::invalid_argument("NUL byte in the line");
            if (Trim(line).empty() || Trim(line).front() == '#')
                continue;
            std::string rest = line;
            const std::string verb = TakeWord(rest);
            ScriptEvent event;
            if (verb == ScriptWords::waitVerb) {
                const auto frames = TakeNumber(rest, "a number of frames", 0ULL, lastFrame);
                ExpectEnd(rest);
                if (frames > lastFrame - frame)
                    throw std::invalid_argument("wait takes the script beyond frame " +
                                                std::to_string(lastFrame) +
                                                ", the last that the frame counter reaches");
                frame += frames;
                continue;
            }
            if (verb == ScriptWords::keyVerb) {
                event = ParseKey(rest);
            } else if (verb == ScriptWords::motionVerb) {
                event.kind = Kind::Motion;
                event.x = TakeField<decltype(SDL_MouseMotionEvent::x)>(rest, "an x coordinate");
                event.y = TakeField<decltype(SDL_MouseMotionEvent::y)>(rest, "a y coordinate");
                ExpectEnd(rest);
            } else if (verb == ScriptWords::buttonVerb) {
                event = ParseButton(rest);
            } else if (verb == ScriptWords::wheelVerb) {
                event.kind = Kind::Wheel;
                event.y = TakeField<decltype(SDL_MouseWheelEvent::y)>(rest, "a number of steps");
                ExpectEnd(rest);
                if (event.y == 0)
                    throw std::invalid_argument("wheel needs a number of steps other than 0");
            } else if (verb == ScriptWords::textVerb) {
                event = ParseText(rest);
            } else if (verb == ScriptWords::windowVerb) {
                event = ParseWindow(rest);
            } else {
                throw std::invalid_argument("unknown event " + Quoted(verb) + " (" +
                                            ScriptWords::Verbs() + ")");
            }
            script.entries.push_back({frame, lineNumber, event});
        } catch (const std::invalid_argument& problem) {
            throw InputScriptError("Input script \"" + Printable(name) + "\", line " +
                                   std::to_string(lineNumber) + ": " + problem.what());
        }
    }
    if (input.bad())
        throw InputScriptError("Cannot read input script \"" + Printable(name) + "\"");
    script.length = script.entries.empty() ? 0 : script.entries.back().frame + 1;
    return script;
}

void InputScript::InjectDue(unsigned long long frame) {
    // Set once: SDL empties its queue whenever a filter is set, so it stays and asks the flags.
    SDL_EventFilter filter = nullptr;
    void* data = nullptr;
    if (SDL_GetEventFilter(&filter, &data) == SDL_FALSE || filter != HoldBackSystemInput)
        SDL_SetEventFilter(HoldBackSystemInput, nullptr);
    holdingBack = next < entries.size();
    const Injecting scope;
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
    // Real input reaches the library again from the poll after the last line's.
    holdingBack = next < entries.size();
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
        event.motion.xrel = Relative(source.x, cursorX);
        event.motion.yrel = Relative(source.y, cursorY);
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
        event.window.event = ScriptWords::WindowEvent(source.kind);
        break;
    }
    return event;
}

} // namespace Host
