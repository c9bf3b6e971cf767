#include "Base/Json.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <exception>
#include <limits>
#include <string>
#include <vector>

#include "Support/Rng.h"

namespace quarn::test {
namespace {

using tool::Json;
using tool::JsonLayout;
using tool::JsonRow;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Json, ValuesOfEachKindHaveTheirText) {
    EXPECT_EQ(Json().text(), "null");
    EXPECT_EQ(Json(nullptr).text(), "null");
    EXPECT_EQ(Json(true).text(), "true");
    EXPECT_EQ(Json(false).text(), "false");
    EXPECT_EQ(Json("wall").text(), R"("wall")");
    EXPECT_EQ(Json(std::string("wall")).text(), R"("wall")");
    EXPECT_EQ(Json(0.5).text(), "0.5");
    EXPECT_EQ(Json(-3).text(), "-3");
}

TEST(Json, IntegersKeepAllDigits) {
    EXPECT_EQ(Json(std::numeric_limits<std::uint64_t>::max()).text(), "18446744073709551615");
    EXPECT_EQ(Json(std::numeric_limits<std::int64_t>::min()).text(), "-9223372036854775808");
    EXPECT_EQ(Json(std::uint8_t{200}).text(), "200");
}

TEST(Json, NumbersAreReadBackBitForBit) {
    std::vector<double> numbers{
        0.1, 1.0 / 3.0, -0.0, 5e-324, std::numeric_limits<double>::max(), std::numeric_limits<double>::min()};
    for (int i = 0; i < seedCount(1000); ++i) {
        Rng rng(i);
        numbers.push_back(rng.uniform(-1.0, 1.0) * std::pow(10.0, rng.integer(-300, 300)));
    }
    for (const double number : numbers) {
        const std::string text = Json(number).text();
        double readBack = 0.0;
        std::from_chars(text.data(), text.data() + text.size(), readBack);
        EXPECT_EQ(readBack, number);
        EXPECT_EQ(std::signbit(readBack), std::signbit(number));
    }
}

TEST(Json, NumbersThatAreNotFiniteAreNull) {
    for (const double number : {kNaN, kInfinity, -kInfinity}) EXPECT_EQ(Json(number).text(), "null");
}

TEST(Json, TextIsEscaped) {
    EXPECT_EQ(Json("a\"b\\c").text(), R"("a\"b\\c")");
    EXPECT_EQ(Json("line\nfeed\ttab\r").text(), R"("line\nfeed\ttab\r")");
    EXPECT_EQ(Json(std::string_view("\0\x01\x1f", 3)).text(), R"("\u0000\u0001\u001f")");
    EXPECT_EQ(Json("/</>").text(), R"("/</>")");
}

TEST(Json, TextBeyondAsciiStaysUtf8) {
    EXPECT_EQ(Json("gr\u00fcn \U0001F4FA").text(), "\"gr\u00fcn \U0001F4FA\"");
}

TEST(Json, InvalidUtf8IsReplaced) {
    EXPECT_EQ(Json("a\xff"
                   "b")
                  .text(),
              "\"a\ufffd"
              "b\"");
}

TEST(Json, MembersAreEscapedAndKeepTheirOrder) {
    EXPECT_EQ(Json::object({{"z", 1}, {"a", 2}, {"\"", 3}}).text(), R"({"z":1,"a":2,"\"":3})");
}

TEST(Json, MemberThatIsSetAgainKeepsItsPlace) {
    Json object = Json::object({{"a", 1}, {"b", 2}});
    object.set("a", "new");
    EXPECT_EQ(object.text(), R"({"a":"new","b":2})");
}

TEST(Json, ValuesAreNested) {
    Json rows = Json::array({Json::object({{"x", 0.5}}), Json::array()});
    rows.append(Json::object());
    EXPECT_EQ(Json::object({{"rows", rows}}).text(), R"({"rows":[{"x":0.5},[],{}]})");
}

TEST(Json, DeepNestingIsWritten) {
    constexpr int kLevels = 200;
    Json value = 1;
    for (int i = 0; i < kLevels; ++i) value = Json::array({value});
    std::string expected(kLevels, '[');
    expected += '1';
    expected.append(kLevels, ']');
    EXPECT_EQ(value.text(), expected);
}

TEST(Json, IndentedLayoutHasALineForEachValue) {
    EXPECT_EQ(Json::object({{"a", Json::array({1, 2})}, {"b", Json::object()}}).text(JsonLayout::Indented),
              "{\n  \"a\": [\n    1,\n    2\n  ],\n  \"b\": {}\n}");
}

TEST(Json, CopyIsIndependent) {
    Json original = Json::array({1});
    const Json copy = original;
    original.append(2);
    EXPECT_EQ(copy.text(), "[1]");
    EXPECT_EQ(original.text(), "[1,2]");
}

TEST(Json, MovedFromValueCanBeAssigned) {
    Json original = 1;
    const Json moved = std::move(original);
    original = Json(2);
    EXPECT_EQ(moved.text() + original.text(), "12");
}

TEST(Json, AppendingToAnObjectThrows) {
    EXPECT_THROW(Json::object({{"a", 1}}).append(2), std::exception);
}

TEST(Json, SettingAMemberOfAnArrayThrows) {
    EXPECT_THROW(Json::array({1}).set("a", 2), std::exception);
}

TEST(JsonRow, MembersAreNullUntilTheyAreSet) {
    JsonRow row({"x", "status"});
    std::string text = "before ";
    row.appendTo(text);
    EXPECT_EQ(text, R"(before {"x":null,"status":null})");
}

TEST(JsonRow, EachKindOfMemberIsWrittenAsByJson) {
    JsonRow row({"number", "count", "text", "none"});
    row.set(0, 0.1);
    row.set(1, std::int64_t{-7});
    row.set(2, std::string_view("a\"b"));
    row.set(3, nullptr);
    std::string text;
    row.appendTo(text);
    EXPECT_EQ(text, R"({"number":0.1,"count":-7,"text":"a\"b","none":null})");
}

TEST(JsonRow, IsWrittenRepeatedlyWithItsLatestMembers) {
    JsonRow row({"x", "y"});
    row.set(0, 1.0);
    row.set(1, kNaN);
    std::string text;
    row.appendTo(text);
    row.set(0, nullptr);
    row.set(1, 2.5);
    row.appendTo(text);
    EXPECT_EQ(text, R"({"x":1.0,"y":null}{"x":null,"y":2.5})");
}

TEST(JsonRow, MovedRowKeepsItsMembers) {
    JsonRow row({"x"});
    row.set(0, 1.0);
    JsonRow moved = std::move(row);
    moved.set(0, 2.0);
    std::string text;
    moved.appendTo(text);
    EXPECT_EQ(text, R"({"x":2.0})");
}

}  // namespace
}  // namespace quarn::test
