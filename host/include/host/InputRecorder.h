// SPDX-License-Identifier: Zlib
#pragma once

#include <filesystem>
#include <fstream>
#include <mutex>
#include <optional>
#include <string>

union SDL_Event;

namespace Host {

/// Records every input event that reaches SDL's queue, with the frame whose poll takes it, as an
/// input script: the text format that `Host::InputScript` reads and replays, whose reference
/// gives the grammar. An engine that records a session in which an input bug shows can replay it
/// in a test, event for event and frame for frame, when its frame utility follows the frames
/// (`BootstrapSettings::framePace`) in both runs.
///
/// Events are seen as SDL queues them, through an event watch: nothing is taken away from the
/// window library, which polls the queue as before. Recorded: key presses and releases (not the
/// system's repeats: the library tells holding by its own tick), cursor motion, the left, middle
/// and right buttons, the vertical wheel, typed text, and the window's close, minimise and
/// maximise. Events the format has no line for are left out.
///
/// The engine's loop tells the recorder where it is: `Polling(frame)` before the frame's input
/// poll (and before anything it injects for that frame), `Polled()` after it. Events queued
/// between the two belong to `frame`; events queued later in the frame (by a call that pumps the
/// window system from a tick, say) belong to the next frame, whose poll takes them.
///
/// SDL's video subsystem must be running while a recorder lives (the window factory's life).
/// Made, told and dropped on the engine's main thread; the watch may be called on any thread.
class InputRecorder {
public:
    /// Creates or empties the file at `path` and starts watching SDL's queue.
    /// Throws `std::runtime_error` ("Cannot write the input recording \"PATH\"") when the file
    /// cannot be opened.
    explicit InputRecorder(const std::filesystem::path& path);
    /// Stops watching and closes the file; the recording is complete up to here.
    ~InputRecorder();

    InputRecorder(const InputRecorder&) = delete;
    InputRecorder& operator=(const InputRecorder&) = delete;

    /// The loop is about to poll input for `frame`; frames only grow. Main thread.
    void Polling(unsigned long long frame);

    /// The loop has polled input for the frame told last. Main thread.
    void Polled();

    /// The script line of `event` ("key down Left Shift", "motion 10 20", "text é"), or nothing
    /// for an event that the format has no line for. Pure; any thread.
    static std::optional<std::string> ScriptLine(const SDL_Event& event);

private:
    static int Watch(void* recorder, SDL_Event* event);
    void Write(const std::string& line);

    std::filesystem::path path;
    std::ofstream file;
    std::mutex lock;
    // The frame that events queued now belong to, and the frame of the last line written.
    unsigned long long frame = 0;
    unsigned long long writtenFrame = 0;
};

} // namespace Host
