// SPDX-License-Identifier: Zlib
// An engine in a few lines: the host kit stands the library up, a window opens, a key reactor is
// registered, and a key pressed through SDL's queue must reach it. Exits 0 when it did.
//   consumer CONFIG_FILE

#include <host/Bootstrap.h>
#include <window/Version.h>

#include <SDL.h>

#include <chrono>
#include <iostream>

static_assert(WINDOW_VERSION_MAJOR >= 0, "the version header is installed with the others");

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::cerr << "usage: consumer CONFIG_FILE\n";
        return 2;
    }
    try {
        Host::Bootstrap host({argv[1]});
        auto window = host.WindowFactory().CreateWindow();
        auto& input = host.InputCollector();
        bool pressed = false;
        auto key = input.CreateKeyReactor(Window::Key::A, 0);
        key->SetPressCallback([&pressed](const std::set<Window::Mode>&) {
            pressed = true;
            return true;
        });

        SDL_Event event{};
        event.type = SDL_KEYDOWN;
        event.key.keysym.sym = SDLK_a;
        event.key.keysym.scancode = SDL_SCANCODE_A;
        if (SDL_PushEvent(&event) != 1) {
            std::cerr << "consumer: cannot push a key: " << SDL_GetError() << "\n";
            return 1;
        }
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!pressed && std::chrono::steady_clock::now() < deadline) {
            input.QueryInputEvents();
            host.Frames().Pump();
            SDL_Delay(1);
        }
        key.Reset();
        window.Reset();
        std::cout << "consumer: window library " << WINDOW_VERSION_STRING << ", key "
                  << (pressed ? "delivered" : "NOT delivered") << "\n";
        return pressed ? 0 : 1;
    } catch (const std::exception& failure) {
        std::cerr << "consumer: " << failure.what() << "\n";
        return 1;
    }
}
