#include "Scene.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace InputLab {
namespace {

constexpr Window::Resolution drawable{1000, 800};

const Clock::time_point now = Clock::time_point{} + std::chrono::hours(1);

bool Covers(const Rectangle& rectangle, int x, int y) {
    return x >= rectangle.x && y >= rectangle.y &&
           x < rectangle.x + static_cast<int>(rectangle.width) &&
           y < rectangle.y + static_cast<int>(rectangle.height);
}

/// The colour at a point, as the renderer paints it: the last rectangle that covers it wins.
Colour ColourAt(const Scene& scene, int x, int y) {
    Colour colour = scene.background;
    for (const Rectangle& rectangle : scene.rectangles)
        if (Covers(rectangle, x, y))
            colour = rectangle.colour;
    return colour;
}

std::size_t CountOf(const Scene& scene, Colour colour) {
    return std::count_if(scene.rectangles.begin(), scene.rectangles.end(),
                         [colour](const Rectangle& r) { return r.colour == colour; });
}

TEST(SceneTest, DigitsChooseDistinctBackgrounds) {
    for (int first = 0; first < 4; ++first)
        for (int second = first + 1; second < 4; ++second)
            EXPECT_FALSE(BackgroundColour(first) == BackgroundColour(second)) << first << second;
    EXPECT_EQ(BackgroundColour(7), BackgroundColour(0)); // unknown index: the start colour
    LabState state;
    state.background = 2;
    EXPECT_EQ(BuildScene(state, drawable, drawable, now).background, BackgroundColour(2));
}

TEST(SceneTest, SquareStartsInTheMiddleAndFollowsTheCursor) {
    LabState state;
    Scene scene = BuildScene(state, drawable, drawable, now);
    EXPECT_EQ(ColourAt(scene, 500, 400), SquareColour);

    state.cursorSeen = true;
    state.cursor = {300, 200};
    scene = BuildScene(state, drawable, drawable, now);
    EXPECT_EQ(ColourAt(scene, 300, 200), SquareColour);
    EXPECT_EQ(ColourAt(scene, 300 + SquareSide / 2 - 1, 200 - SquareSide / 2), SquareColour);
    EXPECT_EQ(ColourAt(scene, 500, 400), scene.background);
    EXPECT_EQ(CountOf(scene, SquareColour), 1U);
}

TEST(SceneTest, CursorInScreenUnitsIsScaledToPixels) {
    LabState state;
    state.cursorSeen = true;
    state.cursor = {250, 100};
    const Scene scene = BuildScene(state, {1000, 800}, {500, 400}, now);
    EXPECT_EQ(ColourAt(scene, 500, 200), SquareColour);
}

TEST(SceneTest, EveryRectangleLiesInsideTheDrawable) {
    LabState state;
    state.cursorSeen = true;
    state.cursor = {-10, 795}; // half outside at the corner
    state.lastWheel = now;
    state.menuOpen = true;
    state.typed = std::wstring(500, L'x'); // more than fit
    const Scene scene = BuildScene(state, {700, 700}, {700, 700}, now);
    for (const Rectangle& rectangle : scene.rectangles) {
        EXPECT_GE(rectangle.x, 0);
        EXPECT_GE(rectangle.y, 0);
        EXPECT_GT(rectangle.width, 0U);
        EXPECT_GT(rectangle.height, 0U);
        EXPECT_LE(rectangle.x + rectangle.width, 700U);
        EXPECT_LE(rectangle.y + rectangle.height, 700U);
    }
}

TEST(SceneTest, MinimisedDrawableHasNoRectangles) {
    LabState state;
    state.menuOpen = true;
    EXPECT_TRUE(BuildScene(state, {0, 0}, {0, 0}, now).rectangles.empty());
}

TEST(SceneTest, HeldCellGlowsBrieflyAfterItsLastHold) {
    LabState state;
    const Scene dark = BuildScene(state, drawable, drawable, now);
    state.lastHold[static_cast<std::size_t>(Cell::W)] = now - HoldGlow / 2;
    const Scene lit = BuildScene(state, drawable, drawable, now);
    state.lastHold[static_cast<std::size_t>(Cell::W)] = now - HoldGlow * 2;
    const Scene faded = BuildScene(state, drawable, drawable, now);

    ASSERT_EQ(dark.rectangles.size(), lit.rectangles.size());
    std::size_t differences = 0;
    for (std::size_t index = 0; index < dark.rectangles.size(); ++index)
        differences += dark.rectangles[index].colour == lit.rectangles[index].colour ? 0 : 1;
    EXPECT_EQ(differences, 1U);
    for (std::size_t index = 0; index < dark.rectangles.size(); ++index)
        EXPECT_EQ(dark.rectangles[index].colour, faded.rectangles[index].colour);
}

TEST(SceneTest, WheelGlowsTheBorderInItsDirectionsColour) {
    LabState state;
    const std::size_t plain = BuildScene(state, drawable, drawable, now).rectangles.size();
    state.lastWheel = now - WheelGlow / 2;
    state.wheelUp = true;
    const Scene up = BuildScene(state, drawable, drawable, now);
    state.wheelUp = false;
    const Scene down = BuildScene(state, drawable, drawable, now);
    EXPECT_EQ(up.rectangles.size(), plain + 4);
    EXPECT_FALSE(ColourAt(up, 0, 0) == ColourAt(down, 0, 0));
    EXPECT_FALSE(ColourAt(up, 0, 0) == up.background);
    state.lastWheel = now - WheelGlow * 2;
    EXPECT_EQ(BuildScene(state, drawable, drawable, now).rectangles.size(), plain);
}

TEST(SceneTest, MenuIsDrawnOnlyWhileOpenAndMarksItsSelection) {
    LabState state;
    const std::size_t closed = BuildScene(state, drawable, drawable, now).rectangles.size();
    state.menuOpen = true;
    state.menuSelection = MenuItem::Resume;
    const Scene first = BuildScene(state, drawable, drawable, now);
    EXPECT_EQ(first.rectangles.size(), closed + 1 + static_cast<std::size_t>(MenuItem::Count));
    state.menuSelection = MenuItem::Quit;
    const Scene last = BuildScene(state, drawable, drawable, now);
    std::size_t differences = 0;
    for (std::size_t index = 0; index < first.rectangles.size(); ++index)
        differences += first.rectangles[index].colour == last.rectangles[index].colour ? 0 : 1;
    EXPECT_EQ(differences, 2U); // one item loses the mark, another gains it
}

TEST(SceneTest, TypedCharactersShowAsBlocks) {
    LabState state;
    state.textInput = true;
    const std::size_t empty = BuildScene(state, drawable, drawable, now).rectangles.size();
    state.typed = L"h\u00e9";
    EXPECT_EQ(BuildScene(state, drawable, drawable, now).rectangles.size(), empty + 2);
}

} // namespace
} // namespace InputLab
