#pragma once

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace quenchly {

/// A UTF-8 text that compares as Unicode: canonically equivalent texts are equal ("é" in one or in two code points).
/// Texts that are not valid UTF-8 compare by their bytes.
class Text {
public:
    Text() = default;
    Text(std::string utf8) : utf8_(std::move(utf8)) {}
    Text(std::string_view utf8) : utf8_(utf8) {}
    Text(const char* utf8) : utf8_(utf8) {}

    const std::string& utf8() const noexcept { return utf8_; }
    bool empty() const noexcept { return utf8_.empty(); }

    friend bool operator==(const Text& a, const Text& b);
    friend std::strong_ordering operator<=>(const Text& a, const Text& b);

private:
    std::string utf8_;
};

/// Every letter in lower case, locale-independent.
std::string lowercased(std::string_view utf8);

/// Without leading and trailing white space; line ends count as white space.
std::string_view trimmed(std::string_view utf8);

/// Without leading and trailing blanks (spaces of any kind and tabs); line ends stay.
std::string_view trimmedBlanks(std::string_view utf8);

/// The first run of characters that are not white space; empty when there is none.
std::string_view firstWord(std::string_view utf8);

bool isValidUtf8(std::string_view bytes);

/// Every occurrence of `from` replaced by `to`; an empty `from` replaces nothing.
std::string replacingAll(std::string_view text, std::string_view from, std::string_view to);

/// A text from a file as one harmless line for display: white space and control characters become single blanks,
/// marks that reorder their surroundings are dropped, invalid bytes become U+FFFD, and at most `maxCharacters` code
/// points remain, the last of them an ellipsis when something was cut.
std::string displayLine(std::string_view text, std::size_t maxCharacters = 400);

}  // namespace quenchly
