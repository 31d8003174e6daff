#include "json_object.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <nlohmann/json.hpp>

#include "decimal_number.h"
#include "rounding.h"

namespace quenchly {
namespace {

/// Base 10, one optional sign, ASCII digits and nothing else.
std::optional<std::int64_t> integerFromText(std::string_view text)
{
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-')
            return std::nullopt;
    }
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::optional<std::int64_t> wholeNumber(const nlohmann::json& value)
{
    if (value.is_number_unsigned()) {
        constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
        return static_cast<std::int64_t>(std::min(value.get<std::uint64_t>(), most));
    }
    if (value.is_number_integer())
        return value.get<std::int64_t>();
    if (value.is_number_float())
        return clampedInteger(value.get<double>());
    return std::nullopt;
}

/// Every open bracket costs the parser some 80 bytes; a file of nothing else would take half a gigabyte and a second.
constexpr int maxNesting = 200'000;

/// Whether more brackets are open at once than any file needs. Strings are skipped.
bool isNestedTooDeep(std::string_view bytes)
{
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < bytes.size() && depth <= maxNesting; ++i) {
        const char c = bytes[i];
        if (inString && c == '\\')
            ++i;
        else if (c == '"')
            inString = !inString;
        else if (!inString)
            depth += (c == '[' || c == '{' ? 1 : 0) - (c == ']' || c == '}' ? 1 : 0);
    }
    return depth > maxNesting;
}

}  // namespace

std::optional<std::string> JsonObject::string(CheckerContract::Key key) const
{
    const nlohmann::json* value = find(key);
    if (value == nullptr || !value->is_string())
        return std::nullopt;
    return value->get_ref<const std::string&>();
}

std::optional<std::string> JsonObject::nonEmptyString(CheckerContract::Key key) const
{
    auto value = string(key);
    return value && !value->empty() ? value : std::nullopt;
}

bool JsonObject::boolean(CheckerContract::Key key) const
{
    const nlohmann::json* value = find(key);
    if (value == nullptr)
        return false;
    if (value->is_boolean())
        return value->get<bool>();
    return value->is_number() && value->get<double>() == 1.0;
}

std::optional<std::int64_t> JsonObject::integer(CheckerContract::Key key) const
{
    const nlohmann::json* value = find(key);
    return value == nullptr ? std::nullopt : wholeNumber(*value);
}

std::optional<std::int64_t> JsonObject::tolerantInteger(CheckerContract::Key key) const
{
    const auto text = string(key);
    return text ? integerFromText(*text) : integer(key);
}

std::optional<double> JsonObject::number(CheckerContract::Key key) const
{
    const nlohmann::json* value = find(key);
    if (value == nullptr || !value->is_number())
        return std::nullopt;
    return value->get<double>();
}

std::optional<double> JsonObject::tolerantNumber(CheckerContract::Key key) const
{
    const auto text = string(key);
    return text ? decimalNumber(*text) : number(key);
}

std::optional<JsonObject> JsonObject::object(CheckerContract::Key key) const
{
    const nlohmann::json* value = find(key);
    if (value == nullptr || !value->is_object())
        return std::nullopt;
    return JsonObject(*value);
}

std::vector<JsonObject> JsonObject::objects(CheckerContract::Key key) const
{
    const nlohmann::json* value = find(key);
    if (value == nullptr || !value->is_array())
        return {};
    std::vector<JsonObject> elements;
    elements.reserve(value->size());
    for (const nlohmann::json& element : *value) {
        if (!element.is_object())
            return {};
        elements.emplace_back(element);
    }
    return elements;
}

const nlohmann::json* JsonObject::find(CheckerContract::Key key) const
{
    const auto at = object_.get().find(key.name());
    return at == object_.get().end() ? nullptr : &*at;
}

std::shared_ptr<const nlohmann::json> parseJsonObject(std::string_view bytes)
{
    if (isNestedTooDeep(bytes))
        return nullptr;
    // The library takes a NUL byte for the end of the text and would accept anything behind it.
    if (bytes.find('\0') != std::string_view::npos)
        return nullptr;
    nlohmann::json value = nlohmann::json::parse(bytes, nullptr, false);
    if (!value.is_object())
        return nullptr;
    return std::make_shared<const nlohmann::json>(std::move(value));
}

}  // namespace quenchly
