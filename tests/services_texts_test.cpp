#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/drawing/image.h"
#include "host/drawing/png.h"
#include "host/drawing/uif_std.h"
#include "host/services/data_folders.h"
#include "host/services/file_names.h"
#include "host/services/resources.h"
#include "host/services/text_ids.h"
#include "host/services/ui_string.h"
#include "tests/drawing_fixture.h"
#include "tests/temporary_folder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <random>

namespace wainscot {
namespace {

using Narrow = LightweightString<char>;
using Wide = LightweightString<wchar_t>;

class TextsTest : public ::testing::Test {
protected:
    TextsTest()
        : environment_({{"LC_ALL", ""}, {"LC_MESSAGES", ""}, {"LANG", ""}, {"WAINSCOT_DATA_DIR", ""}}) {
        Diagnostics::reset();
        Diagnostics::setSink([](char const*) {});
        reloadResourceTexts();
    }
    ~TextsTest() override {
        reloadResourceTexts();
        Diagnostics::setSink(nullptr);
        Diagnostics::reset();
    }

    void use(char const* variable, std::string const& value) {
        setenv(variable, value.c_str(), 1);
        reloadResourceTexts();
    }
    void useOwnData() { use("WAINSCOT_DATA_DIR", folder_.path()); }

    TestEnvironment environment_;
    TemporaryFolder folder_;
};

TEST_F(TextsTest, TheEnvironmentDecidesTheLanguage) {
    struct {
        char const *variable, *value;
        wchar_t const* off;
    } const steps[] = {{"LANG", "de_AT.UTF-8", L"Aus"}, {"LANG", "de@euro", L"Aus"},
                       {"LANG", "xx_YY.UTF-8", L"Off"}, {"LANG", "../texts/de", L"Off"},
                       {"LANG", "de_DE", L"Aus"},       {"LC_MESSAGES", "en_GB.UTF-8", L"Off"},
                       {"LC_ALL", "de_CH", L"Aus"},     {"LC_ALL", "C.UTF-8", L"Off"},
                       {"LC_ALL", "POSIX", L"Off"}};
    EXPECT_EQ(resourceStrW(TextId::off), L"Off");
    for (auto const& step : steps) {
        use(step.variable, step.value);
        EXPECT_EQ(resourceStrW(10001), step.off) << step.variable << "=" << step.value;
    }
}

TEST_F(TextsTest, CountryThenLanguageThenEnglish) {
    folder_.write("texts/en.txt", "1 = one\n2 = two\n3 = three\n");
    folder_.write("texts/de.txt", "1 = eins\n2 = zwei\n");
    folder_.write("texts/de_AT.txt", "1 = oans\n");
    useOwnData();
    use("LANG", "de_AT.UTF-8");
    EXPECT_EQ(resourceStrW(1), L"oans");
    EXPECT_EQ(resourceStrW(2), L"zwei");
    EXPECT_EQ(resourceStrW(3), L"three");
    EXPECT_EQ(resourceStrW(TextId::off), L"Off");
    EXPECT_EQ(Diagnostics::countOf("no resource text"), 0u);
    EXPECT_EQ(resourceStrW(12345), L"#12345");
    EXPECT_EQ(resourceStrW(noResText), L"");
    folder_.write("texts/sub/xx.txt", "1 = elsewhere\n");
    use("LANG", "sub/xx");
    EXPECT_EQ(resourceStrW(1), L"one");
    EXPECT_EQ(Diagnostics::countOf("no resource text"), 1u);
}

/// The languages have the same texts, and the built-in ones are those of the English file.
TEST_F(TextsTest, TheFilesOfTheTreeAreComplete) {
    auto const numbers = [](Narrow const& path) {
        std::ifstream file(path.c_str());
        std::vector<ResId> found;
        for (std::string line; std::getline(file, line);)
            if (!line.empty() && line[0] != '#') found.push_back(static_cast<ResId>(std::stoul(line)));
        return found;
    };
    std::vector<ResId> const english = numbers(findDataFile("texts/en.txt"));
    EXPECT_GE(english.size(), 14u);
    EXPECT_EQ(english, numbers(findDataFile("texts/de.txt")));
    std::map<ResId, Wide> fromFile;
    for (ResId const id : english) fromFile[id] = resourceStrW(id);
    useOwnData();
    for (ResId const id : english) EXPECT_EQ(resourceStrW(id), fromFile[id]) << id;
    EXPECT_TRUE(Diagnostics::lines().empty());
}

TEST_F(TextsTest, LinesAreReadOrReported) {
    folder_.write("texts/en.txt",
                  "\xEF\xBB\xBF# remark\r\n1 = a = b \\\\ \\n\\s\\t \r\n\n 2=\nno number\n-3 = x\n4x = x\n"
                  "99999999999 = x\n5 = \\q\n6 = bad \xFF\n1 = again\n999999 = x\n7 = \\\n8 = end");
    useOwnData();
    EXPECT_EQ(resourceStrW(1), L"a = b \\ \n \t");
    EXPECT_EQ(resourceStrW(2), L"");
    EXPECT_EQ(resourceStrW(8), L"end");
    EXPECT_EQ(resourceStrW(6), L"#6");
    auto const lines = Diagnostics::lines();
    ASSERT_EQ(lines.size(), 9u);
    std::string const name = folder_.path("texts/en.txt");
    EXPECT_EQ(std::string(lines[0]), name + ":5: not of the form: number = text");
    EXPECT_EQ(std::string(lines[6]), name + ":11: this number was given before");
}

TEST_F(TextsTest, HostileFilesAreSurvived) {
    folder_.write("texts/en.txt", std::string(2'000'000, 'x') + "\n1 = " + std::string(2'000'000, 'y') +
                                      "\n" + std::string("2 = a\0b\n", 8) + std::string(100'000, '\n') +
                                      "= \n=\n\\");
    useOwnData();
    EXPECT_EQ(resourceStrW(1).size(), 2'000'000u);
    EXPECT_EQ(resourceStrW(2), Wide(L"a\0b", 3));
    EXPECT_EQ(Diagnostics::lines().size(), 4u);
    std::mt19937 random(5);
    for (int i = 0; i < 200; ++i) {
        std::string bytes;
        for (auto n = random() % 300; n > 0; --n)
            bytes += random() % 2 ? static_cast<char>(random() % 256) : "12=\n\\# "[random() % 7];
        folder_.write("texts/en.txt", bytes);
        reloadResourceTexts();
        EXPECT_EQ(resourceStrW(TextId::on), L"On");
    }
    std::filesystem::remove(folder_.path("texts/en.txt"));
    std::filesystem::create_directory(folder_.path("texts/en.txt"));
    Diagnostics::reset();
    reloadResourceTexts();
    EXPECT_EQ(resourceStrW(TextId::on), L"On");
    EXPECT_EQ(Diagnostics::lines().size(), 1u);
}

TEST_F(TextsTest, Formats) {
    EXPECT_EQ(paddedResourceStrW(TextId::off), L" Off ");
    EXPECT_EQ(ellipsisResourceStrW(TextId::off), L"Off...");
    EXPECT_EQ(formatString(L"Open...", eResStrEllipsis), L"Open...");
    EXPECT_EQ(formatString(L"", ResStrFmt(eResStrEllipsis | eResStrPadded)), L"");
    EXPECT_EQ(formatString(L"\u00E4b\xDF", ResStrFmt(eResStrUpperCase | eResStrPadded)), L" \u00C4B\xDF ");
    EXPECT_EQ(menuFormatString(L"  Small one ", eResStrLowerCase), L"small one");
    EXPECT_EQ(menuFormatString(L"   ", eResStrPadded), L"");
    EXPECT_EQ(formatString(L"%2, %1, %3, 100 %% %", {L"%2", L"b"}), L"b, %2, %3, 100 % %");
}

TEST_F(TextsTest, TextsGivenInBothWays) {
    EXPECT_TRUE(UIString().isEmpty());
    EXPECT_TRUE(UIString(noResText).isEmpty());
    EXPECT_EQ(UIString(L"x").text(), L"x");
    UIString const off(TextId::off, eResStrPadded);
    EXPECT_EQ(off.text(), L" Off ");
    use("LANG", "de");
    EXPECT_EQ(off.text(), L" Aus ");
    EXPECT_FALSE(off == UIString(TextId::off) || off == UIString(L" Aus "));
    EXPECT_EQ(UifStd::measure(off), UifStd::measure(L" Aus "));
}

TEST_F(TextsTest, IconsShareTheSearch) {
    folder_.write("icons/odd.png", "no picture");
    EXPECT_EQ(getIconPath(L"odd.png"), L"");
    useOwnData();
    ASSERT_EQ(getDataFolders().size(), 2u);
    EXPECT_EQ(getDataFolders()[0], folder_.text(".").substr(0, folder_.path().size()));
    EXPECT_EQ(getIconsDirectory(), fileNameFromBytes(folder_.text("icons")));
    EXPECT_EQ(getIconPath(L"odd.png"), fileNameFromBytes(folder_.text("icons/odd.png")));
    for (wchar_t const* name : {L"../texts", L"", L".", L"none.png"}) EXPECT_EQ(getIconPath(name), L"");
    testing::PaintedWindow const window({6, 6});
    EXPECT_EQ(writePng(window.surface, folder_.text("icons/real.png")), "");
    Glib::setIconFolder("");
    EXPECT_TRUE(Glib::loadIcon(L"real.png"));
    EXPECT_FALSE(Glib::loadIcon(L"odd.png") || Glib::loadIcon(L"../icons/real.png"));
    Glib::setIconFolder("");
}

} // namespace
} // namespace wainscot
