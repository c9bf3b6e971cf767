#include <Common/XmlHelper.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cstdarg>
#include <cwchar>
#include <locale>
#include <sstream>
#include <string_view>

#include <Common/Detail/Assert.h>
#include <Common/Detail/NodeText.h>
#include <Common/ZelmoreException.h>

namespace {

constexpr int kBlanksPerLevel = 4;
constexpr std::size_t kFirstBufferSize = 1024;
constexpr int kNodeWithoutTextLine = 223;

// Makes the C functions of this thread use the number format of the classic locale for its
// lifetime.
class ClassicNumbers {
public:
    ClassicNumbers() : previous(uselocale(classic())) {}
    ~ClassicNumbers() { uselocale(previous); }
    ClassicNumbers(const ClassicNumbers&) = delete;
    ClassicNumbers& operator=(const ClassicNumbers&) = delete;

private:
    static locale_t classic() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t previous;
};

// Adds the length `l` to each %s without one: printf's %s takes a narrow string, and %ls a wide
// one.
std::wstring withWideStrings(const std::wstring& pattern) {
    constexpr std::wstring_view kBetweenPercentAndConversion = L"-+ #0'123456789.*$hlLqjzt";
    std::wstring result;
    bool inConversion = false;
    for (const wchar_t character : pattern) {
        const bool hasLength = inConversion && (result.back() == L'l' || result.back() == L'h');
        if (inConversion && character == L's' && !hasLength) result += L'l';
        inConversion = inConversion ? kBetweenPercentAndConversion.find(character) != std::wstring_view::npos
                                    : character == L'%';
        result += character;
    }
    return result;
}

// Returns a stream over the node's text that reads numbers in the classic locale.
std::wistringstream streamOf(const xercesc::DOMNode* node, const wchar_t* message) {
    QUARN_ASSERT(node != nullptr);
    if (message == nullptr && !node->hasChildNodes())
        throw ZelmoreParseException("Framework/CXX/Common/XmlHelper", kNodeWithoutTextLine, L"");
    std::wistringstream stream(quarn::detail::textContent(*node));
    stream.imbue(std::locale::classic());
    return stream;
}

}  // namespace

void XmlHelper::writeIndented(int indent, std::wostream& out, const std::wstring& text) {
    if (text.empty()) return;
    const std::wstring blanks(static_cast<std::size_t>(std::max(indent, 0)) * kBlanksPerLevel, L' ');
    std::wstring_view rest = text;
    do {
        const std::wstring_view line = rest.substr(0, std::min(rest.find(L'\n'), rest.size() - 1) + 1);
        out.write(blanks.data(), static_cast<std::streamsize>(blanks.size()));
        out.write(line.data(), static_cast<std::streamsize>(line.size()));
        rest.remove_prefix(line.size());
    } while (!rest.empty());
}

void XmlHelper::writeTag(int indent, std::wostream& out, const std::wstring& tag, const std::wstring& value) {
    writeIndented(indent, out, L"<" + tag + L">" + value + L"</" + tag + L">\n");
}

void XmlHelper::writeTagPoint(int indent, std::wostream& out, const std::wstring& tag,
                              const Point<double, 3>& point) {
    writeTag(indent, out, tag, format(L"%.15e, %.15e, %.15e", point[0], point[1], point[2]));
}

double XmlHelper::readDouble(xercesc::DOMNode* node, const wchar_t* message) {
    double number = 0.0;
    streamOf(node, message) >> number;
    return number;
}

Point<double, 3> XmlHelper::readPoint(xercesc::DOMNode* node, const wchar_t* message) {
    Point<double, 3> point;
    std::wstring separator;
    streamOf(node, message) >> point[0] >> separator >> point[1] >> separator >> point[2];
    return point;
}

std::wstring XmlHelper::formatVariadic(const wchar_t* pattern, ...) {
    const std::wstring widePattern = withWideStrings(pattern);
    const ClassicNumbers classicNumbers;
    std::wstring buffer(kFirstBufferSize, L'\0');
    for (;;) {
        va_list arguments;
        va_start(arguments, pattern);
        errno = 0;
        const int length = std::vswprintf(buffer.data(), buffer.size(), widePattern.c_str(), arguments);
        va_end(arguments);
        if (length >= 0) {
            buffer.resize(static_cast<std::size_t>(length));
            return buffer;
        }
        // A buffer that is too small sets no error number, or E2BIG in newer C libraries. A failed
        // conversion sets another one.
        if (errno != 0 && errno != E2BIG) return {};
        buffer.resize(buffer.size() * 2);
    }
}
