#include "Base/Json.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

namespace quarn::tool {

namespace {

using Document = nlohmann::ordered_json;

constexpr int kIndent = 2;
constexpr int kNoIndent = -1;

std::string textOf(const Document& document, int indent) {
    constexpr bool kEscapesAllButAscii = false;
    return document.dump(indent, ' ', kEscapesAllButAscii, Document::error_handler_t::replace);
}

Document numberOrNull(double number) {
    if (!std::isfinite(number)) return nullptr;
    return number;
}

}  // namespace

struct Json::Value {
    explicit Value(Document newDocument) : document(std::move(newDocument)) {}
    Document document;
};

struct JsonRow::Value {
    explicit Value(Document newObject) : object(std::move(newObject)) {}
    Document object;
    std::vector<Document*> members;  // of the object, by their index
};

Json::Json(std::nullptr_t) : value(std::make_unique<Value>(nullptr)) {}

Json::Json(bool newValue) : value(std::make_unique<Value>(newValue)) {}

Json::Json(double number) : value(std::make_unique<Value>(numberOrNull(number))) {}

Json::Json(std::string_view text) : value(std::make_unique<Value>(text)) {}

Json::Json(Unsigned count) : value(std::make_unique<Value>(count.number)) {}

Json::Json(Signed count) : value(std::make_unique<Value>(count.number)) {}

Json::Json(const Json& other) : value(std::make_unique<Value>(*other.value)) {}

Json::Json(Json&& other) noexcept = default;

Json& Json::operator=(Json other) noexcept {
    std::swap(value, other.value);
    return *this;
}

Json::~Json() = default;

Json Json::array(std::initializer_list<Json> elements) {
    Json result;
    result.value->document = Document::array();
    for (const Json& element : elements) result.append(element);
    return result;
}

Json Json::object() {
    Json result;
    result.value->document = Document::object();
    return result;
}

Json Json::object(std::initializer_list<JsonMember> members) {
    Json result = object();
    for (const JsonMember& member : members) result.set(member.name, member.value);
    return result;
}

void Json::append(Json element) {
    value->document.push_back(std::move(element.value->document));
}

void Json::set(const std::string& name, Json newValue) {
    value->document[name] = std::move(newValue.value->document);
}

std::string Json::text(JsonLayout layout) const {
    return textOf(value->document, layout == JsonLayout::Indented ? kIndent : kNoIndent);
}

JsonRow::JsonRow(const std::vector<std::string>& names) : value(std::make_unique<Value>(Document::object())) {
    for (const std::string& name : names) value->object[name] = nullptr;
    for (Document& member : value->object) value->members.push_back(&member);
}

JsonRow::JsonRow(JsonRow&& other) noexcept = default;

JsonRow& JsonRow::operator=(JsonRow&& other) noexcept = default;

JsonRow::~JsonRow() = default;

void JsonRow::set(std::size_t index, std::nullptr_t) {
    *value->members[index] = nullptr;
}

void JsonRow::set(std::size_t index, double number) {
    *value->members[index] = numberOrNull(number);
}

void JsonRow::set(std::size_t index, std::int64_t count) {
    *value->members[index] = count;
}

void JsonRow::set(std::size_t index, std::string_view text) {
    *value->members[index] = text;
}

void JsonRow::appendTo(std::string& text) const {
    text += textOf(value->object, kNoIndent);
}

}  // namespace quarn::tool
