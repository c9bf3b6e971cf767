#include <QuarnKit/Formats/Npy/NpyHeader.h>

#include <gtest/gtest.h>

#include <QuarnKit/Base/Error.h>

namespace quarn::test {
namespace {

ErrorDetails errorOf(const std::string& text) {
    try {
        static_cast<void>(parseNpyHeader(text));
    } catch (const Error& error) {
        return error.details();
    }
    ADD_FAILURE() << "nothing was thrown for " << text;
    return {};
}

std::string headerText(const std::string& number, const std::string& order, const std::string& shape) {
    return "{'descr': " + number + ", 'fortran_order': " + order + ", 'shape': " + shape + ", }";
}

std::string shapeText(const std::string& shape) {
    return headerText("'<f8'", "False", shape);
}

TEST(NpyHeader, NumberOrderAndShapeAreParsed) {
    const NpyHeader first = parseNpyHeader(shapeText("(5, 3)") + "        \n");
    EXPECT_EQ(first.number, NpyNumber::Float64);
    EXPECT_EQ(first.order, NpyOrder::RowMajor);
    EXPECT_EQ(first.rowCount, 5U);
    EXPECT_EQ(first.columnCount, 3U);
    EXPECT_EQ(first.dataBytes(), 120U);
    const NpyHeader second = parseNpyHeader(headerText("'<f4'", "True", "(7,2)"));
    EXPECT_EQ(second.number, NpyNumber::Float32);
    EXPECT_EQ(second.order, NpyOrder::ColumnMajor);
    EXPECT_EQ(second.dataBytes(), 56U);
    EXPECT_EQ(parseNpyHeader(headerText("'>f8'", "False", "(1, 2)")).number, NpyNumber::Float64BigEndian);
}

TEST(NpyHeader, OneDimensionIsOneRow) {
    EXPECT_EQ(parseNpyHeader(shapeText("(6,)")).rowCount, 1U);
    EXPECT_EQ(parseNpyHeader(shapeText("(6,)")).columnCount, 6U);
}

TEST(NpyHeader, EntriesMayHaveAnyOrderQuotesAndBlanks) {
    for (const char* text : {"{\"shape\":(2,3),\"fortran_order\":False,\"descr\":\"<f8\"}",
                             "  { 'fortran_order' : False ,\n'shape' : ( 2 , 3 ) , 'descr' : '<f8' , } \n"}) {
        EXPECT_EQ(parseNpyHeader(text).rowCount, 2U) << text;
        EXPECT_EQ(parseNpyHeader(text).columnCount, 3U) << text;
    }
}

TEST(NpyHeader, OtherNumbersAreNamed) {
    for (const char* name : {"<i8", "<f2", ">f4", "<c16", "|b1", "|O", "=f8", ""})
        EXPECT_EQ(errorOf(headerText("'" + std::string(name) + "'", "False", "(2, 3)")).found,
                  "found a NumPy array of \"" + std::string(name) + "\"");
    EXPECT_EQ(errorOf(headerText("[('x', '<f8'), ('y', '<f8')]", "False", "(2, 3)")).expected,
              "floats: \"<f8\" (numpy.float64), \">f8\" or \"<f4\"");
    EXPECT_NE(errorOf(headerText("<f8", "False", "(2, 3)")).found, "");
}

TEST(NpyHeader, OtherShapesAreErrors) {
    for (const char* shape : {"()",
                              "(3)",
                              "3",
                              "(2, 3, 4)",
                              "(-1, 3)",
                              "(2.0, 3)",
                              "(2 3)",
                              "(2,, 3)",
                              "(,)",
                              "(2, 0)",
                              "(2, 3",
                              "(a, 3)",
                              "[2, 3]",
                              "(18446744073709551616, 1)",
                              "(1, 1000001)",
                              "(2305843009213693952, 1)",
                              "(1152921504606846976, 2)",
                              "(99999999999999999999999, 3)",
                              "((2, 3), )",
                              ""})
        EXPECT_EQ(errorOf(shapeText(shape)).file, "") << shape;
    EXPECT_EQ(parseNpyHeader(shapeText("(2305843009213693951, 1)")).dataBytes(), 18446744073709551608U);
    EXPECT_EQ(parseNpyHeader(shapeText("(0, 3)")).dataBytes(), 0U);
}

TEST(NpyHeader, TextsOfAnotherFormAreErrors) {
    const std::string good = shapeText("(2, 3)");
    for (std::size_t length = 0; length + 1 < good.size(); ++length)
        EXPECT_NE(errorOf(good.substr(0, length)).found, "") << length;
    for (const std::string& text :
         {good + "x", "x" + good, std::string("{}"), std::string("{'descr': '<f8'}"),
          std::string("{'descr': '<f8', 'descr': '<f8', 'fortran_order': False, 'shape': (2, 3)}"),
          std::string("{'descr': '<f8', 'fortran_order': False, 'shape': (2, 3), 'more': 1}"),
          std::string("{'descr' '<f8', 'fortran_order': False, 'shape': (2, 3)}"),
          std::string("{descr: '<f8', 'fortran_order': False, 'shape': (2, 3)}"),
          headerText("'<f8'", "0", "(2, 3)"), std::string(60000, '('), std::string(60000, '{'),
          "{" + std::string(60000, '\'')})
        EXPECT_NE(errorOf(text).expected, "") << text.substr(0, 80);
}

TEST(NpyHeader, TheWrittenBeginningHasOneSizeAndIsParsedAgain) {
    for (const std::uint64_t rows : {0ULL, 1ULL, 1000000ULL, 18446744073709551ULL}) {
        for (const std::uint64_t columns : {1ULL, 7ULL, 100ULL}) {
            const std::string beginning = npyBeginning(rows, columns);
            ASSERT_EQ(beginning.size(), kNpyBeginningBytes);
            EXPECT_EQ(beginning.substr(0, 10), std::string("\x93NUMPY\x01\x00\x76\x00", 10));
            EXPECT_EQ(beginning.back(), '\n');
            const NpyHeader header = parseNpyHeader(beginning.substr(10));
            EXPECT_EQ(header.rowCount, rows);
            EXPECT_EQ(header.columnCount, columns);
        }
    }
}

}  // namespace
}  // namespace quarn::test
