#pragma once

#include <cstdint>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "checker_contract.h"

namespace quenchly {

/// A tolerant view of a decoded JSON object that is kept elsewhere: whatever is absent or of another type than asked
/// for is none, and nothing throws. Only keys of the contract can be asked for.
class JsonObject {
public:
    /// `object` must hold an object and outlive the view.
    explicit JsonObject(const nlohmann::json& object) : object_(object) {}

    /// The string under `key`, an empty one included.
    std::optional<std::string> string(CheckerContract::Key key) const;

    /// The string under `key` when it has at least one character.
    std::optional<std::string> nonEmptyString(CheckerContract::Key key) const;

    /// true and the numbers 1 and 1.0 are true; false, 0, absence and everything else are false.
    bool boolean(CheckerContract::Key key) const;

    /// A number, its fraction cut off toward zero, clamped to 64 bits. Booleans and strings are none.
    std::optional<std::int64_t> integer(CheckerContract::Key key) const;

    /// Like `integer`, and also a string of one optional sign and ASCII digits that fits 64 bits.
    std::optional<std::int64_t> tolerantInteger(CheckerContract::Key key) const;

    /// Any number. Booleans and strings are none.
    std::optional<double> number(CheckerContract::Key key) const;

    /// Like `number`, and also a string that is as a whole a decimal floating-point literal of finite value.
    std::optional<double> tolerantNumber(CheckerContract::Key key) const;

    std::optional<JsonObject> object(CheckerContract::Key key) const;

    /// The elements of the array under `key`, empty when it is no array or even one element is no object.
    std::vector<JsonObject> objects(CheckerContract::Key key) const;

private:
    const nlohmann::json* find(CheckerContract::Key key) const;

    std::reference_wrapper<const nlohmann::json> object_;
};

/// The value of a JSON text whose top level is an object; null for every other text. Never throws. By pointer, as the
/// value's type costs every source that sees it whole more than half a second of compiling.
std::shared_ptr<const nlohmann::json> parseJsonObject(std::string_view bytes);

}  // namespace quenchly
