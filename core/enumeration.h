#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quenchly {

/// Whether an enumeration has a case of this value. Compilers print a case by its name, any other value as a cast.
template <auto value>
consteval bool isCase()
{
    const std::string_view function = __PRETTY_FUNCTION__;
    return function[function.rfind(" = ") + 3] != '(';
}

/// One text for each case of an enumeration, by the case's number. What has no text, no place in the order or no text
/// of its own does not compile.
template <class E, std::size_t count>
consteval std::array<std::string_view, count> textsOfCases(const std::pair<E, std::string_view> (&texts)[count])
{
    static_assert(isCase<static_cast<E>(count - 1)>(), "there are more texts than cases");
    static_assert(!isCase<static_cast<E>(count)>(), "a case has no text");
    std::array<std::string_view, count> inOrder;
    for (std::size_t i = 0; i < count; ++i) {
        if (texts[i].first != static_cast<E>(i))
            throw std::logic_error("the texts do not stand in the order of the cases");
        for (std::size_t earlier = 0; earlier < i; ++earlier)
            if (texts[earlier].second == texts[i].second)
                throw std::logic_error("two cases have the same text");
        inOrder[i] = texts[i].second;
    }
    return inOrder;
}

/// The raw texts of an enumeration's cases, from `textsOfCases`. Each enumeration that has raw texts specialises this
/// beside its definition; of any other, nothing that needs them compiles.
template <class E>
inline constexpr std::nullptr_t rawValues = nullptr;

/// The raw text of a case, as it stands in the state files.
template <class E>
constexpr std::string_view rawValue(E value) noexcept
{
    return rawValues<E>[static_cast<std::size_t>(value)];
}

/// The case whose raw text is exactly `text`; none when there is no such case.
template <class E>
constexpr std::optional<E> fromRawValue(std::string_view text) noexcept
{
    for (std::size_t i = 0; i < rawValues<E>.size(); ++i)
        if (rawValues<E>[i] == text)
            return static_cast<E>(i);
    return std::nullopt;
}

}  // namespace quenchly
