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

class KeyTranslation : public ::testing::TestWithParam<KeyRow> {};

TEST_P(KeyTranslation, GivesTheKeyAndItsCode) {
    const KeyRow& row = GetParam();
    EXPECT_EQ(TranslateKey(Sym(row.sym)), row.key);
    EXPECT_EQ(KeyCode(row.key), row.code);
}

// The ends of every run of the table, the odd ones out, and keys that have no enumerator.
INSTANTIATE_TEST_SUITE_P(
    Table, KeyTranslation,
    ::testing::Values(
        KeyRow{"Escape", SDLK_ESCAPE, Key::Escape, 1}, KeyRow{"F1", SDLK_F1, Key::F1, 2},
        KeyRow{"F12", SDLK_F12, Key::F12, 13}, KeyRow{"Pause", SDLK_PAUSE, Key::Pause, 14},
        KeyRow{"A", SDLK_a, Key::A, 15}, KeyRow{"Z", SDLK_z, Key::Z, 40},
        KeyRow{"Return", SDLK_RETURN, Key::Return, 47},
        KeyRow{"Backquote", SDLK_BACKQUOTE, Key::Backquote, 48},
        KeyRow{"Digit1", SDLK_1, Key::Digit1, 49}, KeyRow{"Digit9", SDLK_9, Key::Digit9, 57},
        KeyRow{"Digit0", SDLK_0, Key::Digit0, 58}, KeyRow{"Minus", SDLK_MINUS, Key::Minus, 59},
        KeyRow{"Equals", SDLK_EQUALS, Key::Equals, 60},
        KeyRow{"Apostrophe", SDLK_QUOTE, Key::Quote, 64},
        KeyRow{"DoubleQuote", SDLK_QUOTEDBL, Key::Quote, 64},
        KeyRow{"Backslash", SDLK_BACKSLASH, Key::Backslash, 68},
        KeyRow{"Backspace", SDLK_BACKSPACE, Key::Backspace, 69},
        KeyRow{"Tab", SDLK_TAB, Key::Tab, 70}, KeyRow{"CapsLock", SDLK_CAPSLOCK, Key::CapsLock, 71},
        KeyRow{"NumLock", SDLK_NUMLOCKCLEAR, Key::NumLock, 73},
        KeyRow{"PageDown", SDLK_PAGEDOWN, Key::PageDown, 76},
        KeyRow{"PageUp", SDLK_PAGEUP, Key::PageUp, 77}, KeyRow{"Right", SDLK_RIGHT, Key::Right, 79},
        KeyRow{"Down", SDLK_DOWN, Key::Down, 81}, KeyRow{"Delete", SDLK_DELETE, Key::Delete, 82},
        KeyRow{"Space", SDLK_SPACE, Key::None, 0},
        KeyRow{"PrintScreen", SDLK_PRINTSCREEN, Key::None, 0},
        KeyRow{"Insert", SDLK_INSERT, Key::None, 0}, KeyRow{"Keypad1", SDLK_KP_1, Key::None, 0},
        KeyRow{"LeftShift", SDLK_LSHIFT, Key::None, 0}, KeyRow{"LeftGui", SDLK_LGUI, Key::None, 0},
        KeyRow{"Hash", SDLK_HASH, Key::None, 0}, KeyRow{"Tilde", 126, Key::None, 0}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(KeyTranslation, ReadsOnlyTheKeycode) {
    SDL_Keysym keysym = Sym(SDLK_a);
    keysym.scancode = SDL_SCANCODE_Q; // another layout's key position
    keysym.mod = KMOD_LSHIFT;
    EXPECT_EQ(TranslateKey(keysym), Key::A);
}

TEST(KeyTranslation, EveryKeycodeOutsideTheTableIsNone) {
    // Walk the whole printable range and the special block: exactly 77 keycodes give a key.
    int translated = 0;
    for (SDL_Keycode sym = 0; sym < 0x40000100; sym = sym == 0x200 ? 0x40000000 : sym + 1)
        translated += TranslateKey(Sym(sym)) != Key::None;
    EXPECT_EQ(translated, 77); // 76 keys, Quote twice
}

TEST(ModeTranslation, SixModifiersAndNotTheGuiKeys) {
    EXPECT_EQ(TranslateMode(SDLK_LSHIFT), Mode::LeftShift);
    EXPECT_EQ(TranslateMode(SDLK_LALT), Mode::LeftAlt);
    EXPECT_EQ(TranslateMode(SDLK_LCTRL), Mode::LeftCtrl);
    EXPECT_EQ(TranslateMode(SDLK_RSHIFT), Mode::RightShift);
    EXPECT_EQ(TranslateMode(SDLK_RALT), Mode::RightAlt);
    EXPECT_EQ(TranslateMode(SDLK_RCTRL), Mode::RightCtrl);
    EXPECT_EQ(TranslateMode(SDLK_LGUI), std::nullopt);
    EXPECT_EQ(TranslateMode(SDLK_RGUI), std::nullopt);
    EXPECT_EQ(TranslateMode(SDLK_a), std::nullopt);
    EXPECT_EQ(TranslateMode(SDLK_LCTRL - 1), std::nullopt); // below the block, unsigned wrap
}

TEST(MouseTranslation, ButtonsWheelAndWindowEvents) {
    EXPECT_EQ(TranslateButton(SDL_BUTTON_LEFT), Button::Left);
    EXPECT_EQ(TranslateButton(SDL_BUTTON_MIDDLE), Button::Middle);
    EXPECT_EQ(TranslateButton(SDL_BUTTON_RIGHT), Button::Right);
    EXPECT_EQ(TranslateButton(SDL_BUTTON_X1), std::nullopt);
    EXPECT_EQ(TranslateButton(SDL_BUTTON_X2), std::nullopt);
    EXPECT_EQ(TranslateWheel(5), Button::WheelUp);
    EXPECT_EQ(TranslateWheel(1), Button::WheelUp);
    EXPECT_EQ(TranslateWheel(-3), Button::WheelDown);
    EXPECT_EQ(TranslateWheel(0), std::nullopt);
    EXPECT_EQ(TranslateWindowEvent(SDL_WINDOWEVENT_CLOSE), WindowEvent::Close);
    EXPECT_EQ(TranslateWindowEvent(SDL_WINDOWEVENT_MINIMIZED), WindowEvent::Minimize);
    EXPECT_EQ(TranslateWindowEvent(SDL_WINDOWEVENT_MAXIMIZED), WindowEvent::Maximize);
    EXPECT_EQ(TranslateWindowEvent(SDL_WINDOWEVENT_RESTORED), std::nullopt);
}

// Containers order by numeric code, not by index; values outside the tables share one place.
TEST(CodeOrder, SetsIterateByCode) {
    const std::set<Mode> modes{Mode::RightCtrl, Mode::LeftCtrl, Mode::RightShift,
                               Mode::LeftAlt,   Mode::RightAlt, Mode::LeftShift};
    EXPECT_EQ(std::vector<Mode>(modes.begin(), modes.end()),
              (std::vector<Mode>{Mode::LeftShift, Mode::LeftAlt, Mode::LeftCtrl, Mode::RightShift,
                                 Mode::RightAlt, Mode::RightCtrl}));

    const std::set<Button> buttons{Button::Middle, Button::Right, Button::Left};
    EXPECT_EQ(std::vector<Button>(buttons.begin(), buttons.end()),
              (std::vector<Button>{Button::Left, Button::Right, Button::Middle}));

    const std::set<Key> keys{Key::Delete, Key::None, Key::Z, Key::Return};
    EXPECT_EQ(std::vector<Key>(keys.begin(), keys.end()),
              (std::vector<Key>{Key::None, Key::Z, Key::Return, Key::Delete}));

    EXPECT_LT(KeyCode(Key::Z), ModeCode(Mode::LeftShift));
    EXPECT_LT(ModeCode(Mode::RightCtrl), KeyCode(Key::Return));

    // Out-of-table values collapse: two of them are equivalent keys of a set.
    const std::set<WindowEvent> events{WindowEvent::Reserved, static_cast<WindowEvent>(9),
                                       WindowEvent::Close};
    EXPECT_EQ(events.size(), 2u);
    EXPECT_EQ(WindowEventCode(static_cast<WindowEvent>(9)), 100003u);
    EXPECT_EQ(ButtonCode(static_cast<Button>(7)), 0u);
    EXPECT_EQ(ModeCode(static_cast<Mode>(6)), 0u);
}

} // namespace
} // namespace Window
