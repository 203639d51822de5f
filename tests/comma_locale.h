#pragma once

#include "tests/temporary_folder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>

namespace wainscot {

/// Numbers are written with "," before the decimals and "." between thousands while it lives, by the C
/// library and by the streams. The locale is made for the test alone, so that no machine lacks it.
class CommaLocale {
public:
    CommaLocale() : before_(std::locale::global(std::locale(std::locale(), new CommaNumbers))) {
        TemporaryFolder const folder;
        folder.write("source",
                     "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\ngrouping 3;3\nEND LC_NUMERIC\n");
        // All other categories are left out, which makes it complain and takes milliseconds.
        std::string const make =
            "localedef --force --quiet --charmap=ANSI_X3.4-1968 --inputfile=" + folder.path("source") + " " +
            folder.path("comma") + " 2>&1";
        [[maybe_unused]] int const complaints = std::system(make.c_str());
        TestEnvironment const place{{"LOCPATH", folder.path()}};
        std::setlocale(LC_ALL, "C.UTF-8");
        std::setlocale(LC_NUMERIC, "comma");
        char number[8];
        std::snprintf(number, sizeof number, "%.1f", 1.5);
        EXPECT_STREQ(number, "1,5") << "localedef does not work; it needs the Debian package locales";
    }
    ~CommaLocale() {
        std::locale::global(before_);
        std::setlocale(LC_ALL, "C");
    }
    CommaLocale(CommaLocale const&) = delete;
    CommaLocale& operator=(CommaLocale const&) = delete;

private:
    struct CommaNumbers : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::locale before_;
};

} // namespace wainscot
