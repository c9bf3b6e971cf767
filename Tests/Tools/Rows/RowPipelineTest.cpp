#include "Rows/RowPipeline.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>

#include <QuarnKit/Base/NumberText.h>
#include "Base/LogWarnings.h"
#include "Support/Rng.h"
#include "Support/TemporaryFile.h"

namespace quarn::test {
namespace {

const std::vector<tool::Column> kColumns = {{"number"}, {"sum"}};
const tool::InputColumns kInput = {{"a", "b"}, {{{{{"a", "b"}}}}}};
constexpr std::size_t kBlockBytes = 262144;  // of one thread

class TextSink : public tool::RowSink {
public:
    [[nodiscard]] tool::ResultRows makeRows() const override { return {tool::ResultFormat::Csv, kColumns}; }
    void write(const tool::ResultRows& rows) override {
        text += rows.text();
        rowCount += rows.rowCount();
        missingResultCount += rows.missingResultCount();
    }
    void flush() override { ++flushes; }

    std::string text;
    std::uint64_t rowCount = 0;
    std::uint64_t missingResultCount = 0;
    int flushes = 0;
};

// The result of a row whose cells are empty is its number alone.
void addSumOrEmpty(std::int64_t number, std::span<const double> numbers, tool::ResultRows& rows) {
    const std::array<tool::Cell, 2> cells = {number,
                                             numbers.empty() ? tool::Cell() : numbers[0] + numbers[1]};
    rows.add(cells, tool::HasResult::Yes);
}

// Rows with a negative sum have no answer, and rows with an infinite one cannot be answered.
void addSum(std::int64_t number, std::span<const double> numbers, tool::ResultRows& rows) {
    const double sum = numbers[0] + numbers[1];
    if (std::isinf(sum)) throw std::runtime_error("row " + std::to_string(number));
    const std::array<tool::Cell, 2> cells = {number, sum};
    rows.add(cells, sum < 0.0 ? tool::HasResult::No : tool::HasResult::Yes);
}

struct Outcome {
    TextSink sink;
    std::string error;  // with its line
};

void runOn(const std::string& text, std::size_t threads, Outcome& outcome) {
    const TemporaryFile file(text);
    try {
        tool::RowPipeline pipeline(InputStream(file.path(), "a CSV file"), kInput, "m", threads);
        pipeline.run(addSum, outcome.sink);
    } catch (const Error& error) {
        outcome.error = error.details().found + ", line " + std::to_string(error.details().line);
    } catch (const std::runtime_error& error) {
        outcome.error = error.what();
    }
}

void expectOutcome(const std::string& text, const std::string& results, const std::string& error = "") {
    for (const std::size_t threads : {1U, 2U, 7U}) {
        SCOPED_TRACE(threads);
        Outcome outcome;
        runOn(text, threads, outcome);
        EXPECT_EQ(outcome.error, error);
        ASSERT_TRUE(outcome.sink.text == results);  // too long to be shown
    }
}

struct Rows {
    std::string input;
    std::string results;
    std::uint64_t count = 0;
    std::uint64_t missingResults = 0;
    std::uint64_t lines = 0;

    void add(double a, double b) {
        input += numberText(a) + "," + numberText(b) + "\n";
        results += std::to_string(++count) + "," + numberText(a + b) + "\n";
        if (a + b < 0.0) ++missingResults;
        ++lines;
    }
    void addLine(const std::string& line) {
        input += line + "\n";
        ++lines;
    }
};

Rows someRows(int seed, int count) {
    Rng rng(seed);
    Rows rows;
    for (int i = 0; i < count; ++i) {
        rows.add(rng.spread(), rng.spread());
        if (rng.integer(0, 20) == 0) rows.addLine("# a remark");
    }
    return rows;
}

TEST(RowPipeline, AnInputWithoutRowsIsAnError) {
    for (const char* text : {"", "\n", "a,b\n", "a,b", "# a remark", "\xEF\xBB\xBF"})
        expectOutcome(text, "", "found no rows, line 0");
}

TEST(RowPipeline, AnswersComeInTheOrderOfTheRows) {
    for (int i = 0; i < 5; ++i) {
        SCOPED_TRACE(i);
        const Rows rows = someRows(i, 30000 * i + 10);
        expectOutcome("a,b\n" + rows.input, rows.results);
    }
}

TEST(RowPipeline, AnswersAreCounted) {
    const Rows rows = someRows(1, 40000);
    Outcome outcome;
    runOn(rows.input, 3, outcome);
    EXPECT_EQ(outcome.sink.rowCount, rows.count);
    EXPECT_EQ(outcome.sink.missingResultCount, rows.missingResults);
    EXPECT_GT(outcome.sink.flushes, 0);
}

TEST(RowPipeline, RowsMayEndWhereABlockEnds) {
    constexpr std::size_t kRowBytes = 16;
    for (const std::size_t blocks : {1U, 2U, 3U, 8U}) {
        for (const int extraRows : {-1, 0, 1}) {
            Rows rows;
            while (rows.input.size() < blocks * kBlockBytes) rows.add(1.25, 2.34567891);
            ASSERT_EQ(rows.input.size() % kRowBytes, 0U);
            if (extraRows < 0) rows.input.pop_back();
            if (extraRows > 0) rows.add(3, 4);
            expectOutcome(rows.input, rows.results);
        }
    }
}

TEST(RowPipeline, ABadRowStopsBehindTheAnswersBeforeIt) {
    for (int i = 0; i < 20; ++i) {
        SCOPED_TRACE(i);
        Rows rows = someRows(i, Rng(i).integer(0, 60000));
        const std::string error = "found 3 numbers, line " + std::to_string(rows.lines + 1);
        expectOutcome(rows.input + "1,2,3\n" + someRows(i, 5000).input + "4,x\n", rows.results, error);
    }
}

TEST(RowPipeline, AnAnswerThatFailsStopsBehindTheAnswersBeforeIt) {
    for (int i = 0; i < 20; ++i) {
        SCOPED_TRACE(i);
        Rows rows = someRows(i, Rng(i).integer(0, 60000));
        const std::string error = "row " + std::to_string(rows.count + 1);
        const std::string rest = someRows(i, 5000).input;
        expectOutcome(rows.input + "inf,0\n" + rest + "inf,0\n" + rest + "1,2,3\n", rows.results, error);
    }
}

TEST(RowPipeline, ABadRowBeforeAQueryThatFailsIsReported) {
    const Rows rows = someRows(1, 1000);
    expectOutcome(rows.input + "1\ninf,0\n", rows.results,
                  "found 1 number, line " + std::to_string(rows.lines + 1));
}

TEST(RowPipeline, FurtherCellsFollowTheResultsOfTheirRow) {
    std::string input = "id;b;a\n";
    std::string results;
    for (int i = 1; i <= 60000; ++i) {
        const std::string number = std::to_string(i);
        const bool isEmpty = i % 7 == 0;
        const bool isQuoted = i % 1000 == 0;
        input += (isQuoted ? "\"" + number + "\n;\"\"\"" : "c," + number) +
                 (isEmpty ? ";;\n" : ";1;" + number + "\n");
        results += number + "," + (isEmpty ? "" : std::to_string(i + 1)) + ",";
        results += isQuoted ? "\"" + number + "\n;\"\"\"\n" : "\"c," + number + "\"\n";
    }
    for (const std::size_t threads : {1U, 2U, 7U}) {
        const TemporaryFile file(input);
        tool::RowPipeline pipeline(InputStream(file.path(), "a CSV file"), kInput, "m", threads);
        ASSERT_EQ(pipeline.input().passColumns({"a", "b"}).size(), 1U);
        TextSink sink;
        pipeline.run(addSumOrEmpty, sink);
        EXPECT_TRUE(sink.text == results);  // too long to be shown
    }
}

TEST(RowPipeline, RemarksBeforeTheHeaderMayFillBlocks) {
    Rows rows;
    while (rows.input.size() < 5 * kBlockBytes) rows.addLine("# a remark");
    rows.addLine("a,b");
    for (int i = 0; i < 10; ++i) rows.add(i, i);
    expectOutcome(rows.input + "a,b\n", rows.results, "found \"a\", line " + std::to_string(rows.lines + 1));
}

TEST(RowPipeline, WarningsComeInTheOrderOfTheRowsAndOnceInARow) {
    Rows rows;
    for (int i = 0; i < 20000; ++i) rows.add(i, 0);
    const auto warn = [](std::int64_t number, std::span<const double> /*numbers*/,
                         tool::ResultRows& /*results*/) {
        tool::addLogWarning("thousand " + std::to_string(number / 1000));
    };
    std::string expected;
    for (int i = 0; i <= 20; ++i) expected += "warning: thousand " + std::to_string(i) + "\n";
    for (const std::size_t threads : {1U, 2U, 7U}) {
        const TemporaryFile file(rows.input);
        tool::RowPipeline pipeline(InputStream(file.path(), "a CSV file"), kInput, "m", threads);
        TextSink sink;
        ::testing::internal::CaptureStderr();
        pipeline.run(warn, sink);
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), expected);
    }
}

TEST(RowPipeline, AnEndlessLineIsRefused) {
    const Rows rows = someRows(1, 100);
    expectOutcome(rows.input + std::string(3000000, '1'), rows.results,
                  "found a line of more than 1000000 bytes, line " + std::to_string(rows.lines + 1));
}

}  // namespace
}  // namespace quarn::test
