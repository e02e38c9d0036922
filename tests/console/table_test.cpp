#include "console/terminal/table.h"
#include "tools/errors.h"
#include "tools/text/display.h"
#include "tools/text/values.h"

#include <gmock/gmock.h>

#include <QJsonObject>

namespace tov::console {

namespace {

using ::testing::HasSubstr;

Table fruits()
{
    Table table({"name", {"weight (g)", "word1"}, "meaning"});
    table.addRow({"apple", 150, "what falls from trees"});
    table.addRow({"cherry", 8, {"none", QJsonValue(), Cell::Tone::Bad}});
    return table;
}

TableForm terminalOf(std::size_t width)
{
    TableForm form;
    form.width = width;
    return form;
}

} // namespace

TEST(Table, AlignsColumnsByWhatTheyShow)
{
    EXPECT_EQ(fruits().toText(), "name    weight (g)  meaning\n"
                                 "apple   150         what falls from trees\n"
                                 "cherry  8           none\n");
    Table wide({"name", "size"});
    wide.addRow({"周波数", "1"});          // two columns each
    wide.addRow({"e\u0301te\u0301", "2"}); // accents of their own take none
    EXPECT_EQ(wide.toText(), "name    size\n周波数  1\ne\u0301te\u0301     2\n");
}

TEST(Table, KeepsWhatACellHoldsInItsLine)
{
    Table table({"name", "size"});
    table.addRow({"two\nlines\x1b[31m\xFF\u0085", "1"});
    EXPECT_EQ(table.toText(), "name                              size\n"
                              "two\\x0Alines\\x1B[31m\\xFF\\xC2\\x85  1\n");
}

TEST(Table, DividesCellsIntoLinesWhereTheTerminalEnds)
{
    EXPECT_EQ(fruits().toText(terminalOf(35)), "name    weight (g)  meaning\n"
                                               "apple   150         what falls from\n"
                                               "                    trees\n"
                                               "cherry  8           none\n");
    Table word({"name"});
    word.addRow({"周波数周波数周波数"});
    EXPECT_EQ(word.toText(terminalOf(9)), "name\n周波数周\n波数周波\n数\n");
}

TEST(Table, ShowsTheColumnsAndRowsThatAreWanted)
{
    TableForm form;
    form.columns = {"meaning", "name"};
    form.filter = "APP";
    EXPECT_EQ(fruits().toText(form), "meaning                name\nwhat falls from trees  apple\n");
    EXPECT_EQ(fruits().toJson(form),
              (QJsonArray{QJsonObject{{"meaning", "what falls from trees"}, {"name", "apple"}}}));
    form.columns = {"nothing"};
    try {
        fruits().toText(form);
        FAIL() << "there is no such column";
    } catch (const BadUse& error) {
        EXPECT_THAT(error.what(), HasSubstr("nothing"));
    }
}

TEST(Table, GivesProgramsValuesByTheirOwnNames)
{
    EXPECT_EQ(fruits().toJson(),
              (QJsonArray{QJsonObject{{"name", "apple"}, {"word1", 150}, {"meaning", "what falls from trees"}},
                          QJsonObject{{"name", "cherry"}, {"word1", 8}, {"meaning", QJsonValue()}}}));
    EXPECT_EQ(Cell(std::uint64_t{18446744073709551615U}).value, "18446744073709551615") << "no number of JSON's";
}

TEST(Table, ColoursCellsAndNotTheirRoom)
{
    TableForm form;
    form.coloured = true;
    EXPECT_THAT(fruits().toText(form), HasSubstr("cherry  8           \x1b[31mnone\x1b[0m\n"));
}

TEST(Numbers, HaveAsFewDigitsAsGiveThemBack)
{
    EXPECT_EQ(toText(23.1), "23.1");
    EXPECT_EQ(toText(20e9), "20000000000");
    EXPECT_EQ(toText(-0.00025), "-0.00025");
    EXPECT_EQ(toText(6.02e23), "6.02e+23");
    EXPECT_EQ(toText(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(toText(0.0), "0");
}

} // namespace tov::console
