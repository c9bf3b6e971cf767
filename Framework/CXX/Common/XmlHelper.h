/// \file
/// Reading and writing of single XML values.
#pragma once

#include <ostream>
#include <string>
#include <type_traits>
#include <xercesc/dom/DOMNode.hpp>

#include <Common/Export.h>
#include <QuarnScreen/Point.h>

/// Writers and readers of single XML values. Number text is written and read in the classic locale, whatever
/// the process's locale is.
///
/// Thread-safety: all operations are safe on any number of threads, as long as each has its own stream and
/// document.
class QUARNSCREEN_EXPORT XmlHelper {
public:
    /// Writes \p text, with four blanks for each level of \p indent at its start and after each line feed
    /// that another character follows. An empty text writes nothing; an indent of zero or less writes no
    /// blanks.
    static void writeIndented(int indent, std::wostream& out, const std::wstring& text);

    /// Writes one element with its text and a line feed.
    ///
    /// Intended: nothing is escaped, as a reader would expect; markup in \p value becomes markup in the
    /// output. A value that holds a line feed gets the indent inside it too.
    static void writeTag(int indent, std::wostream& out, const std::wstring& tag, const std::wstring& value);

    /// Writes one element whose text is "x, y, z" with 16 significant digits each.
    static void writeTagPoint(int indent, std::wostream& out, const std::wstring& tag,
                              const Point<double, 3>& point);

    /// Text formatted by a pattern of printf's kind, where %s takes a wide string.
    /// \return the empty string where an argument cannot be converted.
    template <class... Arguments>
    [[nodiscard]] static std::wstring format(const std::wstring& pattern, const Arguments&... arguments);

    /// Number at the start of the node's text, as a stream reads it; 0.0 where there is none.
    /// \throws ZelmoreParseException (line 223, empty message) where \p message is null and \p node has no
    ///        children. With a message nothing is thrown, and the message is not looked at.
    static double readDouble(xercesc::DOMNode* node, const wchar_t* message);

    /// Three numbers from the node's text, with one word of any kind between two of them; 0.0 for each that
    /// is missing.
    /// \throws ZelmoreParseException as readDouble() does.
    static Point<double, 3> readPoint(xercesc::DOMNode* node, const wchar_t* message);

private:
    // Null-terminated arguments in C's calling convention, made by format() alone.
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
