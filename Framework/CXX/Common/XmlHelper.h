/// \file
/// Single XML values.
#pragma once

#include <ostream>
#include <string>
#include <type_traits>
#include <xercesc/dom/DOMNode.hpp>

#include <Common/Export.h>
#include <QuarnScreen/Point.h>

/// Writes and reads single XML values.
///
/// Numbers are written and read in the classic locale, regardless of the locale of the process.
///
/// Thread-safety: all operations are safe on any number of threads, if each thread has its own
/// stream and document.
///
/// \code{.cpp}
/// std::wostringstream xml;
/// XmlHelper::writeTag(1, xml, L"Name", XmlHelper::format(L"%s %d", std::wstring(L"left"), 2));
/// assert(xml.str() == L"    <Name>left 2</Name>\n");
/// \endcode
class QUARNSCREEN_EXPORT XmlHelper {
public:
    /// Writes \p text with four blanks per level of \p indent at the start of each line. O(n).
    ///
    /// A line feed at the end of the text does not start a line. An empty text writes nothing. An
    /// indent of zero or less writes no blanks.
    static void writeIndented(int indent, std::wostream& out, const std::wstring& text);

    /// Writes one element with its text and a line feed. O(n).
    /// \note Intended: markup in \p value is not escaped, and a value with a line feed is indented
    ///       after it too; a reader would expect the value itself to be preserved.
    static void writeTag(int indent, std::wostream& out, const std::wstring& tag, const std::wstring& value);

    /// Writes one element whose text is "x, y, z", with 16 significant digits for each number.
    static void writeTagPoint(int indent, std::wostream& out, const std::wstring& tag,
                              const Point<double, 3>& point);

    /// Formats numbers and wide strings by a pattern of printf, in which %s is a wide string.
    /// \return the text; empty if an argument cannot be converted
    /// \pre the arguments match the pattern; it is not checked
    template <class... Arguments>
    [[nodiscard]] static std::wstring format(const std::wstring& pattern, const Arguments&... arguments);

    /// Returns the number at the start of the node's text, as an input stream reads it. O(n).
    /// \param node the node, with all text below it
    /// \param message null to require child nodes; the text itself is not used
    /// \return the number; 0.0 if there is none, and the largest double if it overflows
    /// \pre \p node is not null
    /// \throws ZelmoreParseException (line 223, empty message) if \p message is null and \p node
    ///         has no child nodes
    static double readDouble(xercesc::DOMNode* node, const wchar_t* message);

    /// Returns three numbers from the node's text, with one word of any kind between two numbers.
    /// O(n).
    /// \return the numbers; 0.0 for each that is missing
    /// \pre \p node is not null
    /// \throws ZelmoreParseException as readDouble()
    static Point<double, 3> readPoint(xercesc::DOMNode* node, const wchar_t* message);

private:
    // Takes null-terminated strings in C's calling convention. Only format() calls it.
    static std::wstring formatVariadic(const wchar_t* pattern, ...);

    static const wchar_t* asVariadic(const std::wstring& text) { return text.c_str(); }
    template <class T>
    static std::decay_t<const T&> asVariadic(const T& value);
};

template <class T>
std::decay_t<const T&> XmlHelper::asVariadic(const T& value) {
    using Argument = std::decay_t<const T&>;
    static_assert(std::is_arithmetic_v<Argument> || std::is_same_v<Argument, const wchar_t*> ||
                      std::is_same_v<Argument, wchar_t*>,
                  "format takes numbers and wide strings");
    return value;
}

template <class... Arguments>
std::wstring XmlHelper::format(const std::wstring& pattern, const Arguments&... arguments) {
    return formatVariadic(pattern.c_str(), asVariadic(arguments)...);
}
