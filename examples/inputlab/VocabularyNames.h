// SPDX-License-Identifier: Zlib
#pragma once

#include <window/InputVocabulary.h>

#include <set>
#include <string>
#include <vector>

namespace InputLab {

/// The enumerators' own names ("A", "Digit2", "LeftShift", "WheelUp", "Close"), so that what the
/// lab prints reads like the library's headers. Unknown values give "?" and the stored number.
std::string KeyName(Window::Key key);
std::string ModeName(Window::Mode mode);
std::string ButtonName(Window::Button button);
std::string WindowEventName(Window::WindowEvent event);

/// "{}" or "{LeftShift, LeftCtrl}", in the set's own order (the numeric codes).
std::string ModesText(const std::set<Window::Mode>& modes);

/// Every key with an enumerator, `None` excluded, in declaration order.
std::vector<Window::Key> AllKeys();

/// Every modifier, in declaration order.
std::vector<Window::Mode> AllModes();

} // namespace InputLab
