#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/limited_text.h"
#include "hextinterface/manager/register/letter_codes.h"
#include "hextinterface/manager/register/type_tables.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using naming::CodeTable;
using naming::GtypeTable;
using naming::letters;
using naming::SkeyTable;

// The code of value number n, counted from 1, where every value before has one.
std::string codeAt(int width, int n) {
    CodeTable table(width);
    for (int i = 1; i < n; ++i) {
        table.code(std::to_string(i));
    }
    return std::string(table.code(std::to_string(n)));
}

TEST(CodeTable, CodesCountFromTheRightAndCarry) {
    EXPECT_EQ(codeAt(1, 1), "B");
    EXPECT_EQ(codeAt(1, 25), "Z");
    EXPECT_EQ(codeAt(1, 26), "a");
    EXPECT_EQ(codeAt(1, 51), "z");
    EXPECT_EQ(codeAt(2, 1), "AB");
    EXPECT_EQ(codeAt(2, 51), "Az");
    EXPECT_EQ(codeAt(2, 52), "BA");
    EXPECT_EQ(codeAt(2, 2703), "zz");
    EXPECT_EQ(codeAt(3, 1), "AAB");
    EXPECT_EQ(codeAt(3, 52 * 52 - 1), "Azz");
    EXPECT_EQ(codeAt(3, 52 * 52), "BAA");
}

TEST(CodeTable, AFullTableRefusesNewValuesAndKeepsTheOld) {
    for (const auto& [width, capacity] : {std::pair(1, 51), std::pair(2, 2703), std::pair(3, 140607)}) {
        CodeTable table(width);
        std::set<std::string> codes;
        for (int i = 0; i < capacity; ++i) {
            codes.emplace(table.code(std::to_string(i)));
        }
        EXPECT_EQ(codes.size(), static_cast<std::size_t>(capacity));
        EXPECT_EQ(codes.count(std::string(static_cast<std::size_t>(width), 'A')), 0U);
        for (int attempt = 0; attempt < 2; ++attempt) {
            try {
                table.code("one more");
                ADD_FAILURE() << "width " << width;
            } catch (const ExportException& failure) {
                EXPECT_STREQ(failure.what(), "one more类型数超出预定范围！");
            }
        }
        EXPECT_EQ(table.code(std::to_string(capacity - 1)), std::string(static_cast<std::size_t>(width), 'z'));
    }
}

TEST(CodeTable, TheEmptyValueHasACodeButIsAppendedAsUnderscores) {
    CodeTable table(2);
    std::string name = "X";
    table.append(name, "");
    table.append(name, "first");
    EXPECT_EQ(name, "X__AB");
    EXPECT_EQ(table.code(""), "AC");
    EXPECT_EQ(table.code("first"), "AB");
}

TEST(Letters, SpellACounterWithoutALoneA) {
    EXPECT_EQ(letters(1), "B");
    EXPECT_EQ(letters(25), "Z");
    EXPECT_EQ(letters(26), "BA");
    EXPECT_EQ(letters(27), "BB");
    EXPECT_EQ(letters(26 * 26), "BAA");
    EXPECT_EQ(letters(208827064575), "ZZZZZZZZ");
    EXPECT_THROW(letters(208827064576), OutOfRange);
}

std::string skeyFor(std::initializer_list<const char*> rows, const naming::TypeFields& query) {
    SkeyTable table;
    for (const char* row : rows) {
        table.addRow(row);
    }
    const std::string* found = table.find(query);
    return found != nullptr ? *found : "none";
}

TEST(SkeyTable, WildcardsMatchAnythingAndExactFieldsBeatThem) {
    const auto elbow = "ELBOW|##|BW|BW|##|##|X";
    EXPECT_EQ(skeyFor({elbow}, {"ELBOW", "LR", "BW", "BW", "", ""}), "X");
    EXPECT_EQ(skeyFor({elbow}, {"ELBOW", "LR", "BW", "SW", "", ""}), "none");
    EXPECT_EQ(skeyFor({elbow}, {"TEE", "LR", "BW", "BW", "", ""}), "none");
    EXPECT_EQ(skeyFor({elbow, "##|##|##|##|##|##|ANY"}, {"ELBOW", "LR", "BW", "BW", "", ""}), "X");
    EXPECT_EQ(skeyFor({elbow, "##|##|##|##|##|##|ANY"}, {"TEE", "LR", "BW", "BW", "", ""}), "ANY");
    // Three exact fields of a row for any item score more than the item alone.
    EXPECT_EQ(skeyFor({"TEE|##|##|##|##|##|ITEM", "##|##|BW|BW|##|##|ENDS"}, {"TEE", "A", "BW", "BW", "", ""}), "ENDS");
    EXPECT_EQ(skeyFor({}, {"ELBOW", "", "", "", "", ""}), "none");
}

TEST(SkeyTable, AnItypeThatIsEmptyOrBeginsWithAtIsNotCompared) {
    EXPECT_EQ(skeyFor({"TEE|A|||||X"}, {"TEE", "@anything", "", "", "", ""}), "X");
    EXPECT_EQ(skeyFor({"TEE|A|||||X"}, {"TEE", "", "", "", "", ""}), "X");
    EXPECT_EQ(skeyFor({"TEE|A|||||X"}, {"TEE", "B", "", "", "", ""}), "none");
    EXPECT_EQ(skeyFor({"TEE|A|||||X", "TEE|##|||||Y"}, {"TEE", "A", "", "", "", ""}), "X");
}

TEST(SkeyTable, OfEqualScoresTheFirstInFieldOrderWins) {
    const naming::TypeFields query = {"TEE", "", "BW", "", "", ""};
    EXPECT_EQ(skeyFor({"TEE|Z|##||||LAST", "TEE|A|##||||FIRST"}, query), "FIRST");
    EXPECT_EQ(skeyFor({"##|##|BW||||HASH", "TEE|##|##||||ITEM"}, query), "HASH");  // "##" sorts before "TEE"
    EXPECT_EQ(skeyFor({"!E|##|##||||ITEM", "##|##|BW||||HASH"}, {"!E", "", "BW", "", "", ""}), "ITEM");
}

TEST(SkeyTable, RowsThatSayNothingArePassedOverAndTheLastOfEqualOnesStands) {
    EXPECT_EQ(skeyFor({"", ";A|B|C|D|E|F|G", "A|B|C|D|E|F", "A|B|C|D|E|F|"}, {"A", "B", "C", "D", "E", "F"}), "none");
    EXPECT_EQ(skeyFor({"A||||||S|more", "A||||||T"}, {"A", "", "", "", "", ""}), "T");
}

std::string gtypeFor(std::initializer_list<const char*> patterns, std::string_view skey) {
    GtypeTable table;
    for (const char* pattern : patterns) {
        table.add(pattern, std::string("=") + pattern);
    }
    const std::string* found = table.find(skey);
    return found != nullptr ? *found : "none";
}

TEST(GtypeTable, HashMarksStandForCharactersAndForTheRest) {
    EXPECT_EQ(gtypeFor({"1#3"}, "123"), "=1#3");
    EXPECT_EQ(gtypeFor({"12#"}, "12"), "=12#");
    EXPECT_EQ(gtypeFor({"12#"}, "12345"), "=12#");
    EXPECT_EQ(gtypeFor({"12"}, "123"), "none");
    EXPECT_EQ(gtypeFor({"123"}, "12"), "none");
    EXPECT_EQ(gtypeFor({"1#3"}, "124"), "none");
    EXPECT_EQ(gtypeFor({"#", "###"}, "AB"), "none");
    EXPECT_EQ(gtypeFor({""}, ""), "=");
    EXPECT_EQ(gtypeFor({"", "#"}, "A"), "none");
}

TEST(GtypeTable, TheBestPatternServesOfEqualOnesTheFirst) {
    EXPECT_EQ(gtypeFor({"A#", "AB#", "ABC"}, "ABD"), "=AB#");
    EXPECT_EQ(gtypeFor({"A#", "AB#", "ABC"}, "ABC"), "=ABC");
    EXPECT_EQ(gtypeFor({"A#C", "#BC", "AB#"}, "ABC"), "=#BC");
}

TEST(LimitedText, CountsUnitsAndPicksTheDelimiter) {
    EXPECT_EQ(limitedText("a\r\nb"), "'ab'");
    EXPECT_EQ(limitedText(""), "''");
    EXPECT_EQ(limitedText("O'Neil"), "|O'Neil|");
    EXPECT_EQ(limitedText("a|b"), "'a|b'");
    EXPECT_EQ(limitedText("'a|b'"), "'\"a|b\"'");
    EXPECT_EQ(limitedText(std::string(121, 'x')), "'" + std::string(120, 'x') + "'");
    EXPECT_EQ(limitedText(std::string(60, '\xB0')), "'" + std::string(29, '\xB0') + "'");
    // A wide byte that would reach the limit is not kept, an ASCII byte that reaches it is.
    EXPECT_EQ(limitedText(std::string(116, 'x') + '\xB0'), "'" + std::string(116, 'x') + "'");
    EXPECT_EQ(limitedText(std::string(115, 'x') + '\xB0' + 'y'), "'" + std::string(115, 'x') + "\xB0y'");
    EXPECT_EQ(limitedText("abcdef", 3), "'abc'");
    std::string line = "f(";
    appendLimitedText(line, "it's");
    EXPECT_EQ(line, "f(|it's|");
}

TEST(LimitedText, PiecesHoldTheWholeText) {
    using Pieces = std::vector<std::string>;
    EXPECT_EQ(limitedPieces(""), Pieces{"''"});
    EXPECT_EQ(limitedPieces(std::string(120, 'x')), Pieces{"'" + std::string(120, 'x') + "'"});
    EXPECT_EQ(limitedPieces(std::string(120, 'x') + "it's"), (Pieces{"'" + std::string(120, 'x') + "'", "|it's|"}));
    const Pieces wide = limitedPieces(std::string(30, '\xB0'));
    EXPECT_EQ(wide, (Pieces{"'" + std::string(29, '\xB0') + "'", "'\xB0'"}));
}

}  // namespace
