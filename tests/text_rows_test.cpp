#include "text/wrapped_rows_p.h"

#include <gtest/gtest.h>
#include <optional>
#include <random>

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;
using Rows = std::vector<TextRow>;

Qv::Ptr<iFont> font() {
    return Glib::loadFont({"DejaVu Sans", 12});
}

/// Each line wrapped by itself.
Rows reference(std::wstring const& text, int width) {
    Rows rows;
    Glib::WordWrappingTextRenderer renderer(font(), width);
    for (std::size_t start = 0;;) {
        std::size_t const feed = text.find(L'\n', start);
        bool const endsLine = feed != text.npos;
        std::wstring const line = text.substr(start, endsLine ? feed - start : text.npos);
        renderer.analyse(Text(line));
        std::size_t end = line.size();
        Rows found;
        for (auto at = renderer.lines().rbegin(); at != renderer.lines().rend(); ++at) {
            bool const isLast = found.empty();
            // What ends a line by other means is not told of empty rows.
            std::size_t const from = at->start < line.size() ? at->start : isLast ? line.size() : end - 1;
            found.push_back({start + from, end - from, isLast});
            end = from;
        }
        rows.insert(rows.end(), found.rbegin(), found.rend());
        if (!endsLine) return rows;
        start = feed + 1;
    }
}

class TextRows : public testing::Test, public iTextView {
protected:
    TextRows() { document_.setView(this); }
    void textEdited(TextEdit const& edit) override {
        if (rows_) rows_->edit(edit);
    }
    void open(std::wstring const& text, int width, std::size_t blockLength = 8192) {
        rows_.reset();
        document_.setText(Text(text));
        rows_.emplace(document_, blockLength);
        layOut(width);
    }
    void layOut(int width) {
        width_ = width;
        rows_->setLayout(font(), width);
    }
    void replace(std::size_t index, std::size_t removed, std::wstring const& text) {
        document_.replace(static_cast<int>(index), static_cast<int>(removed), Text(text),
                          TextDocument::Record::no);
    }
    std::wstring text() const { return std::wstring(document_.text().view()); }

    /// Some rows from one on: they touch, and are found again.
    void look(std::size_t index) {
        TextRow row = rows_->row(index);
        for (int i = 0; i < 5; ++i) {
            std::size_t const number = rows_->rowOf(row.start);
            ASSERT_EQ(rows_->row(number), row);
            ASSERT_LT(number, rows_->numRows());
            std::size_t const end = row.start + row.length + (row.endsLine ? 1 : 0);
            if (number + 1 == rows_->numRows()) return;
            row = rows_->row(number + 1);
            ASSERT_EQ(row.start, end);
        }
    }
    void expectRight() {
        while (!rows_->isSettled()) rows_->settle(100);
        Rows const wanted = reference(text(), width_);
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            TextRow const row = rows_->row(i);
            ASSERT_TRUE(row == wanted[i])
                << "row " << i << " of " << wanted.size() << " from " << row.start << " + " << row.length
                << ", not " << wanted[i].start << " + " << wanted[i].length << ", width " << width_;
            ASSERT_EQ(rows_->rowOf(row.start), i);
        }
        ASSERT_EQ(rows_->numRows(), wanted.size());
    }
    std::wstring randomText(std::size_t length) {
        static std::vector<std::wstring> const kinds = {L"abcdefgh    ",
                                                        L"abcde \n",
                                                        L"\u05D0\u05D1\u05D2\u0628\u0627\u0644 ",
                                                        L"abcdefghijkl",
                                                        L"\u0627\u0644\u0645\u0633\u0639",
                                                        L"a\u0301\u0301\U0001F1E9\U0001F600\u200D\n\t\r ",
                                                        std::wstring(L"\0\0\0a\xD800\xDC00 ", 7),
                                                        L"a \u2028\u3000\u00A0b\n",
                                                        L" ",
                                                        L"\u0301"};
        std::wstring made;
        while (made.size() < length) {
            std::wstring const& letters = kinds[random_() % kinds.size()];
            for (auto i = random_() % 60; i > 0; --i) made += letters[random_() % letters.size()];
        }
        made.resize(length);
        return made;
    }

    std::mt19937 random_{42};
    TextDocument document_;
    std::optional<WrappedRows> rows_;
    int width_ = 1;
};

TEST_F(TextRows, AfterEditsAndLooksInAnyOrderAreThoseOfTheWholeText) {
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE(round);
        std::size_t const blockLength = round % 3 ? 4 + random_() % 200 : 8192;
        open(randomText(random_() % (round % 20 ? 600 : 3'000)), 1 + static_cast<int>(random_() % 160),
             blockLength);
        for (int i = 0; i < 40; ++i) {
            std::size_t const length = document_.length();
            std::size_t const place = random_() % (length + 1);
            switch (random_() % 8) {
            case 0:
                rows_->settle(random_() % 300);
                break;
            case 1:
                ASSERT_NO_FATAL_FAILURE(look(random_() % (rows_->numRows() + 3)));
                break;
            case 2:
                replace(place, random_() % (random_() % 4 ? 4 : 400), L"");
                break;
            case 3:
                replace(place, random_() % 4, random_() % 2 ? L"\n" : L" ");
                break;
            case 4:
                if (random_() % 8 == 0) layOut(1 + static_cast<int>(random_() % 160));
                break;
            case 5:
                if (random_() % 4 == 0) {
                    ASSERT_NO_FATAL_FAILURE(expectRight());
                }
                break;
            default:
                replace(place, random_() % 3, randomText(random_() % (random_() % 9 ? 5 : 400)));
            }
        }
        ASSERT_NO_FATAL_FAILURE(expectRight());
        replace(0, document_.length(), randomText(random_() % 50));
        ASSERT_NO_FATAL_FAILURE(expectRight());
    }
}

TEST_F(TextRows, CostWhatLiesNear) {
    std::wstring lines;
    for (int i = 0; i < 20'000; ++i) lines += L"The quick brown fox jumps over the dog.\n";
    std::wstring const word(500'000, L'x');
    std::wstring const nothing(500'000, L'\0');
    for (std::wstring const& whole : {lines, word, nothing}) {
        open(whole, 150);
        auto cost = [&, before = rows_->measured()]() mutable {
            return rows_->measured() - std::exchange(before, rows_->measured());
        };
        EXPECT_EQ(cost(), 0U);
        look(rows_->numRows() / 2);
        // A row of everything was estimated as many.
        EXPECT_LT(cost(), whole == nothing ? 3 * whole.size() : 60'000U);
        while (!rows_->isSettled()) rows_->settle(100'000);
        EXPECT_LT(cost(), 3 * whole.size());
        look(rows_->numRows() / 2);
        EXPECT_EQ(cost(), 0U);
        replace(250'000, 0, L"a");
        EXPECT_LT(cost(), 60'000U);
    }
}

} // namespace
} // namespace wainscot
