#include "host/base/diagnostics.h"
#include "tests/comma_locale.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace wainscot {
namespace {

/// Collects the lines that are written.
class DiagnosticsTest : public testing::Test {
protected:
    DiagnosticsTest() {
        Diagnostics::reset();
        Diagnostics::setSink([this](char const* line) { written_.emplace_back(line); });
    }
    ~DiagnosticsTest() override {
        Diagnostics::setSink(nullptr);
        Diagnostics::reset();
    }

    std::vector<std::string> written_;
};

TEST_F(DiagnosticsTest, CountsKindsAndPrintsTheFirstOfEach) {
    Diagnostics::count("unhandled message", "poot");
    Diagnostics::count("unhandled message", "other");
    Diagnostics::count("refused index", "7");
    EXPECT_EQ(Diagnostics::countOf("unhandled message"), 2u);
    EXPECT_EQ(Diagnostics::countOf("refused index"), 1u);
    EXPECT_EQ(Diagnostics::countOf("never"), 0u);
    ASSERT_EQ(Diagnostics::entries().size(), 2u);
    EXPECT_EQ(Diagnostics::entries()[0].firstDetail, "poot");
#ifndef NDEBUG
    EXPECT_EQ(written_.size(), 2u);
#endif
    Diagnostics::reset();
    EXPECT_TRUE(Diagnostics::entries().empty());
}

TEST_F(DiagnosticsTest, KeepsTheLastLinesOfTheLog) {
    vex_printf("not kept");
    for (int i = 0; i < 1005; ++i) LogBoth("line %d", i);
    auto const lines = Diagnostics::lines();
    ASSERT_EQ(lines.size(), 1000u);
    EXPECT_EQ(lines.front(), "line 5");
    EXPECT_EQ(lines.back(), "line 1004");
    EXPECT_EQ(written_.size(), 1006u);
}

TEST_F(DiagnosticsTest, LinesAreCutAndDependOnNoLocale) {
    wchar_t const noText[] = {static_cast<wchar_t>(0xD800), 0};
    vex_printf("%s", std::string(5000, 'x').c_str());
    vex_printf("title %ls", noText);
    vex_printf("%.2f %ls", 1.5, L"\u20AC");
    CommaLocale const comma;
    vex_printf("%.2f %ls", 1.5, L"\u20AC");
    EXPECT_EQ(written_, (std::vector<std::string>{std::string(1023, 'x'), "(cannot be formatted) title %ls",
                                                  "1.50 \xE2\x82\xAC", "1.50 \xE2\x82\xAC"}));
}

TEST_F(DiagnosticsTest, ASinkMayWriteAndReplaceItselfAndWriteWhileItDies) {
    auto const note = [this](char const* line) { written_.emplace_back(line); };
    Diagnostics::setSink([this, note](char const* line) {
        written_.emplace_back(line);
        Diagnostics::setSink(note);
        vex_printf("inner");
    });
    vex_printf("outer");
    std::shared_ptr<void> farewell(nullptr, [](void*) { vex_printf("farewell"); });
    Diagnostics::setSink([held = std::move(farewell)](char const*) {});
    Diagnostics::setSink(note);
    EXPECT_EQ(written_, (std::vector<std::string>{"outer", "inner", "farewell"}));
}

TEST(ThreadDiagnostics, CountsFromAllThreads) {
    Diagnostics::reset();
    Diagnostics::setSink([](char const*) {});
    {
        std::vector<std::jthread> threads;
        for (int t = 0; t < 4; ++t)
            threads.emplace_back([] {
                for (int i = 0; i < 500; ++i) {
                    Diagnostics::count("from a thread", "");
                    LogBoth("%d", i);
                }
            });
    }
    EXPECT_EQ(Diagnostics::countOf("from a thread"), 2000u);
    EXPECT_EQ(Diagnostics::lines().size(), 1000u);
    Diagnostics::setSink(nullptr);
    Diagnostics::reset();
}

} // namespace
} // namespace wainscot
