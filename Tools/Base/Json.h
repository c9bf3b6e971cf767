/// \file
/// JSON documents and rows, for reports and result rows. Json.cpp alone includes the JSON library,
/// because its headers take seconds to compile.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quarn::tool {

struct JsonMember;

enum class JsonLayout {
    Compact,   ///< One line without blanks.
    Indented,  ///< One line for each value, indented by two blanks a level.
};

/// A JSON value: null, a Boolean, a number, a string, an array, or an object whose members keep
/// their order.
///
/// The constructors convert implicitly, as in Json::object({{"name", "hole"}, {"count", 2}}). A
/// value that was moved from may only be destroyed or assigned to.
class Json {
public:
    Json(std::nullptr_t = nullptr);
    Json(bool value);
    Json(double number);  ///< Null if the number is not finite.
    Json(std::string_view text);
    Json(const std::string& text) : Json(std::string_view(text)) {}
    Json(const char* text) : Json(std::string_view(text)) {}
    template <std::unsigned_integral Count>
    Json(Count count) : Json(Unsigned{count}) {}
    template <std::signed_integral Count>
    Json(Count count) : Json(Signed{count}) {}

    Json(const Json& other);
    Json(Json&& other) noexcept;
    Json& operator=(Json other) noexcept;
    ~Json();

    [[nodiscard]] static Json array(std::initializer_list<Json> elements = {});
    [[nodiscard]] static Json object();
    [[nodiscard]] static Json object(std::initializer_list<JsonMember> members);

    /// Appends an element. \pre the value is an array
    void append(Json element);

    /// Appends a member, or replaces the one of this name. \pre the value is an object
    void set(const std::string& name, Json value);

    /// Returns the value as text, without a final line feed. Invalid UTF-8 in strings becomes
    /// U+FFFD.
    [[nodiscard]] std::string text(JsonLayout layout = JsonLayout::Compact) const;

private:
    struct Unsigned {
        std::uint64_t number;
    };
    struct Signed {
        std::int64_t number;
    };
    struct Value;

    explicit Json(Unsigned count);
    explicit Json(Signed count);

    std::unique_ptr<Value> value;
};

struct JsonMember {
    std::string name;
    Json value;
};

/// Writes objects that have the same members, one after the other. Not safe on several threads.
class JsonRow {
public:
    /// \param names of the members, in their order
    explicit JsonRow(const std::vector<std::string>& names);
    JsonRow(JsonRow&& other) noexcept;
    JsonRow& operator=(JsonRow&& other) noexcept;
    ~JsonRow();

    /// Sets the member \p index. A number that is not finite becomes null.
    void set(std::size_t index, std::nullptr_t);
    void set(std::size_t index, double number);
    void set(std::size_t index, std::int64_t count);
    void set(std::size_t index, std::string_view text);

    /// Appends the object to \p text, in the compact layout of Json.
    void appendTo(std::string& text) const;

private:
    struct Value;
    std::unique_ptr<Value> value;
};

}  // namespace quarn::tool
