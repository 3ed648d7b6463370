// SPDX-License-Identifier: Zlib
// The end-to-end test reads pixels of the lab's screenshots, so these are the rules it relies
// on:\n// a background per digit, the square under the cursor, and nothing drawn outside the
// drawable.
#include "Scene.h"

#include <gtest/gtest.h>

#include <chrono>

namespace InputLab {
namespace {

constexpr Window::Resolution drawable{1000, 800};

const Clock::time_point now = Clock::time_point{} + std::chrono::hours(1);

/// The colour at a point, as the renderer paints it: the last rectangle that covers it wins.
Colour ColourAt(const Scene& scene, int x, int y) {
    Colour colour = scene.background;
    for (const Rectangle& r : scene.rectangles)
        if (x >= r.x && y >= r.y && x < r.x + static_cast<int>(r.width) &&
            y < r.y + static_cast<int>(r.height))
            colour = r.colour;
    return colour;
}

TEST(SceneTest, SquareStartsInTheMiddleAndFollowsTheCursorOverTheDigitsBackground) {
    LabState state;
    EXPECT_EQ(ColourAt(BuildScene(state, drawable, drawable, now), 500, 400), SquareColour);

    state.background = 2;
    state.cursorSeen = true;
    state.cursor = {150, 100}; // in screen units, half the drawable's pixels
    const Scene scene = BuildScene(state, drawable, {500, 400}, now);
    EXPECT_EQ(scene.background, BackgroundColour(2));
    EXPECT_EQ(ColourAt(scene, 300, 200), SquareColour);
    EXPECT_EQ(ColourAt(scene, 300 + SquareSide / 2 - 1, 200 - SquareSide / 2), SquareColour);
    EXPECT_EQ(ColourAt(scene, 500, 400), scene.background); // the square has left the middle
    EXPECT_EQ(ColourAt(scene, 700, 300), scene.background);
}

TEST(SceneTest, EveryRectangleLiesInsideTheDrawable) {
    LabState state;
    state.cursorSeen = true;
    state.cursor = {-10, 795}; // half outside at the corner
    state.lastWheel = now;
    state.menuOpen = true;
    state.typed = std::wstring(500, L'x'); // more than fit
    const Scene scene = BuildScene(state, {700, 700}, {700, 700}, now);
    for (const Rectangle& r : scene.rectangles)
        EXPECT_TRUE(r.x >= 0 && r.y >= 0 && r.width > 0 && r.height > 0 && r.x + r.width <= 700U &&
                    r.y + r.height <= 700U)
            << r.x << ',' << r.y << ' ' << r.width << 'x' << r.height;
    EXPECT_TRUE(BuildScene(state, {0, 0}, {0, 0}, now).rectangles.empty()); // minimised
}

} // namespace
} // namespace InputLab
