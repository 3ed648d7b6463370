// SPDX-License-Identifier: Zlib
#include "input/Translation.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace Window {
namespace {

SDL_Keysym Sym(SDL_Keycode sym) {
    SDL_Keysym keysym{};
    keysym.sym = sym;
    return keysym;
}

struct KeyRow {
    const char* name;
    SDL_Keycode sym;
    Key key;
    std::uint32_t code;
};

// GoogleTest prints every row when it registers the cases; by default it dumps the bytes,
// padding included, which a memory checker reports as uninitialised reads.
void PrintTo(const KeyRow& row, std::ostream* out) {
    *out << row.name;
}

class KeyTranslation : public ::testing::TestWithParam<KeyRow> {};

TEST_P(KeyTranslation, GivesTheKeyAndItsCode) {
    EXPECT_EQ(TranslateKey(Sym(GetParam().sym)), GetParam().key);
    EXPECT_EQ(KeyCode(GetParam().key), GetParam().code);
}

// The edges of the runs where index, code and keycode step together, and the odd ones out.
INSTANTIATE_TEST_SUITE_P(Table, KeyTranslation,
                         ::testing::Values(KeyRow{"Escape", SDLK_ESCAPE, Key::Escape, 1},
                                           KeyRow{"F12", SDLK_F12, Key::F12, 13},
                                           KeyRow{"Z", SDLK_z, Key::Z, 40},
                                           KeyRow{"Return", SDLK_RETURN, Key::Return, 47},
                                           KeyRow{"Digit9", SDLK_9, Key::Digit9, 57},
                                           KeyRow{"Digit0", SDLK_0, Key::Digit0, 58},
                                           KeyRow{"Apostrophe", SDLK_QUOTE, Key::Quote, 64},
                                           KeyRow{"DoubleQuote", SDLK_QUOTEDBL, Key::Quote, 64},
                                           KeyRow{"PageDown", SDLK_PAGEDOWN, Key::PageDown, 76},
                                           KeyRow{"Right", SDLK_RIGHT, Key::Right, 79},
                                           KeyRow{"Delete", SDLK_DELETE, Key::Delete, 82},
                                           KeyRow{"Space", SDLK_SPACE, Key::None, 0},
                                           KeyRow{"LeftShift", SDLK_LSHIFT, Key::None, 0}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(KeyTranslation, ExactlyTheTableGivesKeysAndOnlyTheKeycodeCounts) {
    int translated = 0;
    for (SDL_Keycode sym = 0; sym < 0x40000100; sym = sym == 0x200 ? 0x40000000 : sym + 1)
        translated += TranslateKey(Sym(sym)) != Key::None;
    EXPECT_EQ(translated, 77); // 76 keys, Quote twice

    SDL_Keysym keysym = Sym(SDLK_a);
    keysym.scancode = SDL_SCANCODE_Q; // another layout's key position
    keysym.mod = KMOD_LSHIFT;
    EXPECT_EQ(TranslateKey(keysym), Key::A);
}

TEST(ModeTranslation, SixModifiersAndNotTheGuiKeys) {
    const SDL_Keycode syms[] = {SDLK_LSHIFT, SDLK_LALT, SDLK_LCTRL,
                                SDLK_RSHIFT, SDLK_RALT, SDLK_RCTRL};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(TranslateMode(syms[i]), static_cast<Mode>(i));
    for (const SDL_Keycode none : {SDL_Keycode{SDLK_LGUI}, SDL_Keycode{SDLK_RGUI},
                                   SDL_Keycode{SDLK_a}, SDL_Keycode{SDLK_LCTRL - 1}})
        EXPECT_EQ(TranslateMode(none), std::nullopt);
}

TEST(MouseTranslation, ButtonsWheelAndWindowEvents) {
    EXPECT_EQ(TranslateButton(SDL_BUTTON_MIDDLE), Button::Middle);
    EXPECT_EQ(TranslateButton(SDL_BUTTON_RIGHT), Button::Right);
    EXPECT_EQ(TranslateButton(SDL_BUTTON_X1), std::nullopt);
    EXPECT_EQ(TranslateWheel(5), Button::WheelUp);
    EXPECT_EQ(TranslateWheel(-3), Button::WheelDown);
    EXPECT_EQ(TranslateWheel(0), std::nullopt);
    EXPECT_EQ(TranslateWindowEvent(SDL_WINDOWEVENT_MAXIMIZED), WindowEvent::Maximize);
    EXPECT_EQ(TranslateWindowEvent(SDL_WINDOWEVENT_RESTORED), std::nullopt);
}

// Containers order by numeric code, not by index; values outside the tables share one place.
TEST(CodeOrder, SetsIterateByCode) {
    const std::set<Button> buttons{Button::Middle, Button::Right, Button::Left};
    EXPECT_EQ(std::vector<Button>(buttons.begin(), buttons.end()),
              (std::vector<Button>{Button::Left, Button::Right, Button::Middle}));
    const std::set<Key> keys{Key::Delete, Key::None, Key::Z, Key::Return};
    EXPECT_EQ(std::vector<Key>(keys.begin(), keys.end()),
              (std::vector<Key>{Key::None, Key::Z, Key::Return, Key::Delete}));
    EXPECT_LT(KeyCode(Key::Z), ModeCode(Mode::LeftShift));
    EXPECT_LT(ModeCode(Mode::RightCtrl), KeyCode(Key::Return));
    const std::set<WindowEvent> events{WindowEvent::Reserved, static_cast<WindowEvent>(9),
                                       WindowEvent::Close};
    EXPECT_EQ(events.size(), 2u);
    EXPECT_EQ(ButtonCode(static_cast<Button>(7)), 0u);
}

} // namespace
} // namespace Window
