// SPDX-License-Identifier: Zlib
#pragma once

#include <locale>
#include <ostream>
#include <string>

namespace Fakes {

/// Number punctuation as a localised engine might set it globally: digits grouped by three with
/// `separator`, and `point` as the decimal point.
class Punctuation : public std::numpunct<char> {
public:
    Punctuation(char separator, char point) : separator(separator), point(point) {}

protected:
    char do_thousands_sep() const override { return separator; }
    char do_decimal_point() const override { return point; }
    std::string do_grouping() const override { return "\3"; }

private:
    char separator;
    char point;
};

/// The locales the library must be indifferent to, as a table's rows name them.
struct ForeignLocale {
    const char* name;
    char separator;
    char point;
};

/// Prints a row by its name (by default GoogleTest dumps its bytes, padding included).
inline void PrintTo(const ForeignLocale& locale, std::ostream* out) {
    *out << locale.name;
}

inline constexpr ForeignLocale foreignLocales[] = {
    {"GroupedByComma", ',', '.'}, // "1,000.5"
    {"CommaDecimal", '.', ','},   // "1.000,5"
};

/// Sets the C++ global locale to `locale` for the life of the scope; the classic one afterwards.
/// The C library's locale is left alone: a locale made of facets has no name to give it.
class ScopedGlobalLocale {
public:
    explicit ScopedGlobalLocale(const ForeignLocale& locale)
        : previous(std::locale::global(std::locale(
              std::locale::classic(), new Punctuation(locale.separator, locale.point)))) {}
    ~ScopedGlobalLocale() { std::locale::global(previous); }
    ScopedGlobalLocale(const ScopedGlobalLocale&) = delete;
    ScopedGlobalLocale& operator=(const ScopedGlobalLocale&) = delete;

private:
    std::locale previous;
};

} // namespace Fakes
