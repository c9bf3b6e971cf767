#include "StlTextReader.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <vector>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/PrintableText.h>

namespace quarn {

namespace {

bool isSpace(char byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r') || byte == '\0';
}

// Letters match in either case.
bool isWord(std::string_view word, std::string_view lowerCase) {
    return std::equal(word.begin(), word.end(), lowerCase.begin(), lowerCase.end(),
                      [](char byte, char small) { return (byte | 0x20) == small; });
}

// Returns true for a number outside of the range of floats if it is too small, and not too large.
bool isBelowOne(std::string_view digits) {
    const std::size_t exponent = digits.find_first_of("eE");
    return exponent == std::string_view::npos ? digits.find_first_of("123456789") > digits.find('.')
                                              : digits.substr(exponent + 1).starts_with('-');
}

class Parser {
public:
    Parser(const std::string& stlName, std::string_view stlText,
           const std::function<void(const StlCorners&)>& visitor)
        : name(stlName), rest(stlText), visit(visitor) {}

    std::uint64_t parse();

private:
    void parseSolid();
    void parseFacet();
    void parseLoop();
    std::array<float, 3> takePosition();
    std::string_view takeWord();
    std::string_view takeKeyword();
    std::string_view takeKeywordAfterFacet();
    void skipLine();
    void expect(std::string_view lowerCase);
    [[noreturn]] void refuse(std::string_view word, const std::string& expected) const;

    struct End {};  // thrown if the text ends too early

    const std::string& name;
    std::string_view rest;
    const std::function<void(const StlCorners&)>& visit;
    std::uint64_t line = 1;
    std::vector<std::array<float, 3>> loop;
    std::string joined;  // the two words of a keyword without the blank
};

void Parser::refuse(std::string_view word, const std::string& expected) const {
    // A truncated file may also end within a word.
    if (rest.empty()) throw End{};
    throw Error({.found = "found " + quotedExcerpt(word), .expected = expected, .file = name, .line = line});
}

// Empty at the end of the text.
std::string_view Parser::takeWord() {
    while (!rest.empty() && isSpace(rest.front())) {
        if (rest.front() == '\n') ++line;
        rest.remove_prefix(1);
    }
    const auto* const end = std::find_if(rest.data(), rest.data() + rest.size(), isSpace);
    const std::string_view word = rest.substr(0, static_cast<std::size_t>(end - rest.data()));
    rest.remove_prefix(word.size());
    return word;
}

// Some programs write "end solid" in two words.
std::string_view Parser::takeKeyword() {
    const std::string_view word = takeWord();
    if (!isWord(word, "end")) return word;
    joined = std::string(word) + std::string(takeWord());
    return joined;
}

// Some programs write a number or a comment after "endfacet", on the same line.
std::string_view Parser::takeKeywordAfterFacet() {
    const std::uint64_t facetLine = line;
    std::string_view word = takeKeyword();
    while (line == facetLine && !word.empty() && !isWord(word, "facet") && !isWord(word, "endsolid"))
        word = takeKeyword();
    return word;
}

void Parser::skipLine() {
    rest.remove_prefix(std::min(rest.find_first_of("\r\n"), rest.size()));
}

void Parser::expect(std::string_view lowerCase) {
    const std::string_view word = takeKeyword();
    if (!isWord(word, lowerCase)) refuse(word, '"' + std::string(lowerCase) + '"');
}

std::array<float, 3> Parser::takePosition() {
    std::array<float, 3> position{};
    for (float& number : position) {
        const std::string_view word = takeWord();
        const std::string_view digits = word.substr(word.starts_with('+') ? 1 : 0);
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
        if (end != digits.data() + digits.size() || error == std::errc::invalid_argument || word.empty())
            refuse(word, "a number");
        // A number too small for a float is 0. One too large is an error of the caller's visitor.
        if (error == std::errc::result_out_of_range)
            number = isBelowOne(digits) ? 0.0F : std::numeric_limits<float>::infinity();
    }
    return position;
}

void Parser::parseLoop() {
    expect("loop");
    loop.clear();
    std::string_view word = takeKeyword();
    for (; isWord(word, "vertex"); word = takeKeyword()) loop.push_back(takePosition());
    if (!isWord(word, "endloop")) refuse(word, R"("vertex" or "endloop")");
    for (std::size_t i = 1; i + 1 < loop.size(); ++i) visit({loop[0], loop[i], loop[i + 1]});
}

void Parser::parseFacet() {
    std::string_view word = takeKeyword();
    // The numbers of the normal have no effect.
    if (isWord(word, "normal")) {
        for (int i = 0; i < 3; ++i) static_cast<void>(takeWord());
        word = takeKeyword();
    }
    for (; isWord(word, "outer"); word = takeKeyword()) parseLoop();
    if (!isWord(word, "endfacet")) refuse(word, R"("outer" or "endfacet")");
}

void Parser::parseSolid() {
    skipLine();
    std::string_view word = takeKeyword();
    for (; isWord(word, "facet"); word = takeKeywordAfterFacet()) parseFacet();
    if (!isWord(word, "endsolid")) refuse(word, R"("facet" or "endsolid")");
    skipLine();
}

std::uint64_t Parser::parse() {
    try {
        std::string_view word = takeWord();
        for (; isWord(word, "solid"); word = takeWord()) parseSolid();
        if (!word.empty()) refuse(word, "\"solid\"");
        return 0;
    } catch (const End&) {
        return line;
    }
}

}  // namespace

std::uint64_t forEachStlTextTriangle(const std::string& name, std::string_view text,
                                     const std::function<void(const StlCorners&)>& visit) {
    return Parser(name, text, visit).parse();
}

}  // namespace quarn
