// SPDX-License-Identifier: Zlib
#include "Lab.h"

#include "OverlayPanels.h"
#include "Scene.h"

#include <algorithm>
#include <cmath>
#include <thread>

namespace InputLab {

namespace {

/// The loop's beat. A little longer than the input ticker's default period (16666 us), so that
/// the ticker, which fires only when pumped, is due at every pump instead of every other one.
constexpr std::chrono::microseconds framePeriod{16667};

std::string SizeText(Window::Resolution size) {
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

} // namespace

Lab::Lab(Host::Bootstrap& host, const LabOptions& options, const LabSettings& settings,
         std::optional<Host::InputScript> script, std::ostream& console)
    : host(host)
    , options(options)
    , script(std::move(script))
    , followsFrames(Pace(options).has_value())
    , echo(console) {
    Window::SInputCollector& collector = host.InputCollector();
    // Recording starts before the window exists: the events that its making queues (a pointer
    // already inside it, the focus) are input that the session receives too.
    if (options.record)
        recorder = std::make_unique<Host::InputRecorder>(*options.record);
    window = host.WindowFactory().CreateWindow();
    // The window read the same key when it was made; IWindow has no getter for the state.
    state.fullScreen = settings.fullScreen;
    renderer = std::make_unique<Renderer>(*window, options.screenshot.has_value());

    const LabContext context{collector, *window, host.Log(), state, echo, walks};
    menu = std::make_unique<MenuControls>(context);
    game = std::make_unique<GameControls>(context, state.modalLevel, [this] { menu->Open(); });
    pointer = std::make_unique<PointerControls>(context);

    for (const auto event : {Window::WindowEvent::Close, Window::WindowEvent::Minimize,
                             Window::WindowEvent::Maximize}) {
        auto reactor = collector.CreateWindowReactor(event);
        reactor->SetCallback([this, event] {
            echo.Callback(EventEcho::WindowText(event));
            if (event == Window::WindowEvent::Close)
                state.quit = true;
        });
        windowReactors.push_back(std::move(reactor));
    }

    rateProbe = host.Frames().MakeTicker(settings.tickPeriod);
    rateProbe->SetTickCallback([this](unsigned long long) { ++ticks; });
}

Lab::~Lab() = default;

std::optional<Host::FramePace> Lab::Pace(const LabOptions& options) {
    if (!options.script && !options.record)
        return std::nullopt;
    return Host::FramePace{static_cast<unsigned long long>(framePeriod.count())};
}

void Lab::Run(const std::atomic<bool>& interrupted) {
    auto next = Clock::now();
    unsigned long long frame = 0;
    for (; !state.quit && !interrupted; ++frame) {
        RunFrame(frame);
        if (options.frames && frame + 1 >= *options.frames)
            break;
        // Presentation need not wait for a vertical blank (a virtual display has none), so the
        // loop keeps its own beat rather than spin a core. A late frame is made up by a shorter
        // wait; a loop a whole frame behind starts its beat anew instead of hurrying in a burst.
        next += framePeriod;
        const auto now = Clock::now();
        if (next + framePeriod < now)
            next = now;
        std::this_thread::sleep_until(next);
    }
    if (options.screenshot)
        SaveScreenshot();
    echo.Note("ended after " + std::to_string(frame + (state.quit || interrupted ? 0 : 1)) +
              " frames, " + std::to_string(framesDrawn) + " drawn, " +
              std::to_string(echo.Count()) + " callbacks");
}

void Lab::RunFrame(unsigned long long frame) {
    const Clock::time_point previous = state.now;
    // Frame 0 lies one period after the clock's start, which stands for "never" in the state.
    state.now = followsFrames ? Clock::time_point{std::chrono::duration_cast<Clock::duration>(
                                    static_cast<long long>(frame + 1) * framePeriod)}
                              : Clock::now();
    if (recorder)
        recorder->Polling(frame);
    if (script)
        script->InjectDue(frame);
    host.InputCollector().QueryInputEvents();
    if (recorder)
        recorder->Polled();
    host.Frames().Pump();
    if (state.quit)
        return;

    const Window::Resolution drawable = window->GetDrawableSize();
    if (drawable != lastDrawable && framesDrawn > 0)
        echo.Note("drawable " + SizeText(drawable));
    lastDrawable = drawable;
    BuildOverlay(drawable, previous);
    const Scene scene = BuildScene(state, drawable, window->GetResolution(), state.now);
    if (renderer->Draw(scene, drawable)) {
        if (++framesDrawn == 1)
            echo.Note("ready: drawable " + SizeText(drawable) + " on " + renderer->DeviceName());
    }
    ShowRates(Clock::now());
}

void Lab::BuildOverlay(Window::Resolution drawable, Clock::time_point previous) {
    // ImGui hears nothing of its own: the pointer is what the cursor tracer and the button
    // reactors heard, in the scene's drawable pixels.
    OverlayPointer pointer;
    const Window::Resolution size = window->GetResolution();
    pointer.seen = state.cursorSeen && size.width > 0 && size.height > 0;
    if (pointer.seen) {
        pointer.x = static_cast<float>(state.cursor.x) * drawable.width / size.width;
        pointer.y = static_cast<float>(state.cursor.y) * drawable.height / size.height;
    }
    const auto held = [this](const char* subject) {
        const auto& names = walks.Held();
        return std::find(names.begin(), names.end(), subject) != names.end();
    };
    pointer.left = held("button Left");
    pointer.right = held("button Right");
    pointer.middle = held("button Middle");
    const float seconds = previous == Clock::time_point{}
                              ? 0.0F
                              : std::chrono::duration<float>(state.now - previous).count();
    Overlay& overlay = renderer->GetOverlay();
    overlay.Begin(drawable, seconds, pointer);
    DrawPanels(state, echo, walks, drawable);
    overlay.End();
}

void Lab::ShowRates(Clock::time_point now) {
    if (lastShow == Clock::time_point{}) {
        lastShow = now;
        return;
    }
    const auto elapsed = now - lastShow;
    if (elapsed < std::chrono::seconds(1))
        return;
    const double seconds = std::chrono::duration<double>(elapsed).count();
    const auto rate = [seconds](unsigned long long count) {
        return std::to_string(std::llround(static_cast<double>(count) / seconds));
    };
    window->SetTitleSuffix(rate(ticks - ticksAtLastShow) + " ticks/s, " +
                           rate(framesDrawn - framesAtLastShow) + " frames/s" +
                           (state.menuOpen ? ", menu" : ""));
    ticksAtLastShow = ticks;
    framesAtLastShow = framesDrawn;
    lastShow = now;
}

void Lab::SaveScreenshot() {
    const RgbImage picture = renderer->LastFrame();
    WritePng(*options.screenshot, picture);
    echo.Note("screenshot " +
              SizeText({static_cast<unsigned short>(picture.width),
                        static_cast<unsigned short>(picture.height)}) +
              " written to " + options.screenshot->string());
}

} // namespace InputLab
