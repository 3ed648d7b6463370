// SPDX-License-Identifier: Zlib
#include "ScriptWords.h"

#include <host/InputRecorder.h>

#include <SDL.h>

#include <stdexcept>

namespace Host {

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
        return ScriptWords::Line(
            {ScriptWords::keyVerb, ScriptWords::Direction(event.type == SDL_KEYDOWN), name});
    }
    case SDL_MOUSEMOTION:
        return ScriptWords::Line({ScriptWords::motionVerb, std::to_string(event.motion.x),
                                  std::to_string(event.motion.y)});
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: {
        const auto name = ScriptWords::ButtonWord(event.button.button);
        if (!name)
            return std::nullopt;
        return ScriptWords::Line({ScriptWords::buttonVerb,
                                  ScriptWords::Direction(event.type == SDL_MOUSEBUTTONDOWN),
                                  *name});
    }
    case SDL_MOUSEWHEEL:
        // As the library reads it: the raw steps, whatever the direction setting.
        if (event.wheel.y == 0)
            return std::nullopt;
        return ScriptWords::Line({ScriptWords::wheelVerb, std::to_string(event.wheel.y)});
    case SDL_TEXTINPUT: {
        // A line ends at a line break, so text holding one cannot be written as a line.
        const std::string text = event.text.text;
        if (text.empty() || text.find_first_of("\r\n") != std::string::npos)
            return std::nullopt;
        return ScriptWords::Line({ScriptWords::textVerb, text});
    }
    case SDL_WINDOWEVENT: {
        const auto name = ScriptWords::WindowWord(event.window.event);
        if (!name)
            return std::nullopt;
        return ScriptWords::Line({ScriptWords::windowVerb, *name});
    }
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
        file << ScriptWords::Line({ScriptWords::waitVerb, std::to_string(frame - writtenFrame)})
             << '\n';
        writtenFrame = frame;
    }
    // Flushed line by line, so that a session that crashes leaves its input up to the crash.
    file << line << std::endl;
}

} // namespace Host
