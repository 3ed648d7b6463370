#pragma once

#include <window/SInputCollector.h>

namespace HostTests {

/// An input collector that does nothing, for bootstraps that must not start the real one (it
/// can be made once per process) or that watch only the order of start-up.
class IdleCollector : public Window::SInputCollector {
public:
    void QueryInputEvents() override {}
    Zenk::IntrudablePointer<Window::IWindowReactor>
    CreateWindowReactor(Window::WindowEvent) override {
        return nullptr;
    }
    Zenk::IntrudablePointer<Window::IKeyReactor> CreateKeyReactor(Window::Key,
                                                                  unsigned short) override {
        return nullptr;
    }
    Zenk::IntrudablePointer<Window::IButtonReactor> CreateButtonReactor(Window::Button,
                                                                        unsigned short) override {
        return nullptr;
    }
    Zenk::IntrudablePointer<Window::ITextReactor> CreateTextReactor() override { return nullptr; }
    Zenk::IntrudablePointer<Window::ICursorTracer> CreateCursorTracer(unsigned short) override {
        return nullptr;
    }
    Zenk::IntrudablePointer<Window::IModeReactor> CreateModeReactor(Window::Mode) override {
        return nullptr;
    }
    unsigned char PushModalLevel() override { return 0; }
    unsigned char PopModalLevel() override { return 0; }
    void RemoveReactor(long long) override {}
    void StartTextInput() override {}
    void StopTextInput() override {}
};

} // namespace HostTests
