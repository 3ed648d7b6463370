#include "WindowProbe.h"
#include "platform/Platform.h"

#include <gtest/gtest.h>

namespace {

TEST(NativeHandleOfTest, GivesTheX11WindowId) {
    Probe::RequireDisplay();
    ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
    SDL_Window* window = SDL_CreateWindow("probe", 0, 0, 100, 100, 0);
    ASSERT_NE(window, nullptr) << SDL_GetError();
    // Another connection to the server finds the window under that id, as a renderer would.
    EXPECT_EQ(Probe::X11WidthOf(Window::Platform::NativeHandleOf(window)), 100);
    SDL_DestroyWindow(window);
    SDL_Quit();
}

TEST(NativeHandleOfTest, UnknownWindowGivesTheEmptyHandle) {
    Probe::RequireDisplay();
    ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
    EXPECT_EQ(Window::Platform::NativeHandleOf(nullptr), 0U);
    SDL_Quit();
}

} // namespace
