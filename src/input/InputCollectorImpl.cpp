// SPDX-License-Identifier: Zlib
#include "input/InputCollectorImpl.h"

#include "input/Translation.h"

#include <common/ApplicationErrorException.h>
#include <common/SConfigFile.h>
#include <common/SFrameUtility.h>
#include <window/Configuration.h>
#include <window/Manufacture.h>
#include <zenkbase/singleton.h>

#include <cstdint>

namespace Window {
namespace {

// Counts calls of ManufactureInputCollector, failed ones included; never lowered.
std::int32_t instanceCount = 0;

// Views of the services that make the ticker, built while the library loads; each use looks the
// instance up anew, and, borrowed, they leave the instance storage alone when the library unloads.
const Zenk::Singleton<Common::SFrameUtility, std::shared_ptr> frameUtility(1);
const Zenk::Singleton<Common::Config::SConfigFile, std::shared_ptr> configFile(1);

} // namespace

SInputCollector* ManufactureInputCollector() {
    ++instanceCount;
    if (instanceCount > 1)
        throw Common::ApplicationErrorException("Multiple instances of SInputCollector");
    // The factory starts SDL, so its registration is the sign that SDL is running.
    Zenk::Singleton<SWindowFactory, std::shared_ptr> factory(1);
    if (!factory.Exists())
        throw Common::ApplicationErrorException("SDL not initialized!");
    return new InputCollectorImpl();
}

void InputCollectorImpl::QueryInputEvents() {
    if (!ticker) {
        Common::SFrameUtility* frames = frameUtility.Instance();
        const int pollRate = configFile.Instance()->ReadInteger(Configuration::PollRateKey,
                                                                Configuration::DefaultPollRate);
        // Stored before it gets its callback: should that fail, the next call finds the ticker
        // in place and makes no second one. A rate of zero or below means nothing, and the
        // default serves; one above a tick per microsecond, the fastest ticker.
        ticker = frames->MakeTicker(Configuration::TickPeriod(pollRate));
        ticker->SetTickCallback([this](unsigned long long) { Tick(); });
    }

    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) {
        switch (event.type) {
        case SDL_WINDOWEVENT:
            windowEvents.push_back(event);
            break;
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            // While text input is on, the keyboard speaks through text; Backspace alone is also
            // a key, so that editing works in both modes.
            if (textInputOff ||
                (event.key.repeat == 0 && TranslateKey(event.key.keysym) == Key::Backspace))
                keyEvents.push_back(event);
            break;
        case SDL_TEXTEDITING:
        case SDL_TEXTINPUT:
            if (!textInputOff)
                textEvents.push_back(event);
            break;
        case SDL_MOUSEMOTION:
            DispatchCursor(event);
            break;
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
        case SDL_MOUSEWHEEL:
            buttonEvents.push_back(event);
            break;
        default:
            break;
        }
    }
}

void InputCollectorImpl::Tick() {
    DrainKeyQueue();
    DrainWindowQueue();
    DrainButtonQueue();
    DrainTextQueue();
    HoldTick();
}

void InputCollectorImpl::StartTextInput() {
    SDL_StartTextInput();
    textInputOff = false;
}

void InputCollectorImpl::StopTextInput() {
    SDL_StopTextInput();
    textInputOff = true;
}

unsigned char InputCollectorImpl::PushModalLevel() {
    if (modalLevel == 255)
        throw Common::ApplicationErrorException("Too many modal windows");
    return ++modalLevel;
}

unsigned char InputCollectorImpl::PopModalLevel() {
    if (modalLevel > 0)
        --modalLevel;
    return modalLevel;
}

InputCollectorImpl::WalkScope::WalkScope(InputCollectorImpl& collector) noexcept
    : collector(collector) {
    ++collector.walkDepth;
}

InputCollectorImpl::WalkScope::~WalkScope() {
    if (--collector.walkDepth == 0)
        collector.Compact();
}

} // namespace Window
