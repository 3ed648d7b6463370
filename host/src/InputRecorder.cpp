// SPDX-License-Identifier: Zlib
#include <host/InputRecorder.h>

#include <SDL.h>

#include <stdexcept>

namespace Host {

namespace {

std::optional<std::string> ButtonName(Uint8 button) {
    switch (button) {
    case SDL_BUTTON_LEFT:
        return "left";
    case SDL_BUTTON_MIDDLE:
        return "middle";
    case SDL_BUTTON_RIGHT:
        return "right";
    default:
        return std::nullopt;
    }
}

std::optional<std::string> WindowLine(Uint8 event) {
    switch (event) {
    case SDL_WINDOWEVENT_CLOSE:
        return "window close";
    case SDL_WINDOWEVENT_MINIMIZED:
        return "window minimize";
    case SDL_WINDOWEVENT_MAXIMIZED:
        return "window maximize";
    default:
        return std::nullopt;
    }
}

} // namespace

InputRecorder::InputRecorder(const std::filesystem::path& path)
    : path(path)
    , file(path, std::ios::binary | std::ios::trunc) {
    if (!file)
        throw std::runtime_error("Cannot write the input recording \"" + path.string() + "\"");
    file << "# Input recorded frame by frame; replay it with the frame utility following the "
            "frames.\n";
    SDL_AddEventWatch(&InputRecorder::Watch, this);
}

InputRecorder::~InputRecorder() {
    SDL_DelEventWatch(&InputRecorder::Watch, this);
    file.flush();
}

void InputRecorder::Polling(unsigned long long frame) {
    const std::lock_guard<std::mutex> guard(lock);
    this->frame = frame;
}

void InputRecorder::Polled() {
    const std::lock_guard<std::mutex> guard(lock);
    ++frame;
}

std::optional<std::string> InputRecorder::ScriptLine(const SDL_Event& event) {
    switch (event.type) {
    case SDL_KEYDOWN:
    case SDL_KEYUP: {
        const std::string name = SDL_GetKeyName(event.key.keysym.sym);
        if (event.key.repeat != 0 || name.empty())
            return std::nullopt;
        return std::string(event.type == SDL_KEYDOWN ? "key down " : "key up ") + name;
    }
    case SDL_MOUSEMOTION:
        return "motion " + std::to_string(event.motion.x) + ' ' + std::to_string(event.motion.y);
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: {
        const auto name = ButtonName(event.button.button);
        if (!name)
            return std::nullopt;
        return std::string(event.type == SDL_MOUSEBUTTONDOWN ? "button down " : "button up ") +
               *name;
    }
    case SDL_MOUSEWHEEL:
        // As the library reads it: the raw steps, whatever the direction setting.
        if (event.wheel.y == 0)
            return std::nullopt;
        return "wheel " + std::to_string(event.wheel.y);
    case SDL_TEXTINPUT: {
        // A line ends at a line break, so text holding one cannot be written as a line.
        const std::string text = event.text.text;
        if (text.empty() || text.find_first_of("\r\n") != std::string::npos)
            return std::nullopt;
        return "text " + text;
    }
    case SDL_WINDOWEVENT:
        return WindowLine(event.window.event);
    default:
        return std::nullopt;
    }
}

int InputRecorder::Watch(void* recorder, SDL_Event* event) {
    if (const auto line = ScriptLine(*event))
        static_cast<InputRecorder*>(recorder)->Write(*line);
    return 1; // ignored by SDL for a watch
}

void InputRecorder::Write(const std::string& line) {
    const std::lock_guard<std::mutex> guard(lock);
    if (frame > writtenFrame) {
        file << "wait " << frame - writtenFrame << '\n';
        writtenFrame = frame;
    }
    // Flushed line by line, so that a session that crashes leaves its input up to the crash.
    file << line << std::endl;
}

} // namespace Host
