#include "text.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <vector>

namespace quenchly {
namespace {

struct CodePoint {
    utf8proc_int32_t value = -1;  // below 0: the bytes are not UTF-8
    std::size_t length = 1;
};

CodePoint codePointAt(std::string_view utf8, std::size_t at)
{
    CodePoint result;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(utf8.data() + at),
                                         static_cast<utf8proc_ssize_t>(utf8.size() - at), &result.value);
    result.length = length > 0 ? static_cast<std::size_t>(length) : 1;
    return result;
}

void append(std::string& out, utf8proc_int32_t codePoint)
{
    utf8proc_uint8_t bytes[4];
    out.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(utf8proc_encode_char(codePoint, bytes)));
}

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isBlank(utf8proc_int32_t c)
{
    return c == '\t' || (c >= 0 && utf8proc_category(c) == UTF8PROC_CATEGORY_ZS);
}

bool isLineEnd(utf8proc_int32_t c)
{
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

bool isWhiteSpace(utf8proc_int32_t c)
{
    return isBlank(c) || isLineEnd(c);
}

template <class Predicate>
std::string_view trimmedOf(std::string_view text, Predicate drop)
{
    std::size_t begin = text.size();
    std::size_t end = text.size();
    bool started = false;
    for (std::size_t at = 0; at < text.size();) {
        const CodePoint c = codePointAt(text, at);
        if (!drop(c.value)) {
            if (!started)
                begin = at;
            started = true;
            end = at + c.length;
        }
        at += c.length;
    }
    return text.substr(begin, end - begin);
}

struct DecomposedPoint {
    utf8proc_propval_t combiningClass;  // 0: no mark
    std::size_t position;
    utf8proc_int32_t codePoint;

    auto operator<=>(const DecomposedPoint&) const = default;
};

/// Not left to utf8proc_map, which orders marks by neighbour exchange: minutes for a long run of them.
void orderMarks(std::vector<DecomposedPoint>& points)
{
    const auto isMark = [](const DecomposedPoint& point) { return point.combiningClass != 0; };
    for (auto at = points.begin(); at != points.end();) {
        const auto marks = std::find_if(at, points.end(), isMark);
        at = std::find_if_not(marks, points.end(), isMark);
        std::sort(marks, at);
    }
}

/// The canonical decomposition, or the bytes themselves when they are not UTF-8.
std::string decomposed(const std::string& utf8)
{
    std::vector<DecomposedPoint> points;
    points.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const CodePoint c = codePointAt(utf8, at);
        if (c.value < 0)
            return utf8;
        std::array<utf8proc_int32_t, 8> parts;  // Unicode never needs more than 4
        int unused = 0;
        const auto count = utf8proc_decompose_char(c.value, parts.data(), static_cast<utf8proc_ssize_t>(parts.size()),
                                                   UTF8PROC_DECOMPOSE, &unused);
        for (auto part = parts.begin(); part != parts.begin() + count; ++part)
            points.push_back({utf8proc_get_property(*part)->combining_class, points.size(), *part});
        at += c.length;
    }
    orderMarks(points);
    std::string out;
    out.reserve(utf8.size());
    for (const DecomposedPoint& point : points)
        append(out, point.codePoint);
    return out;
}

bool reordersText(utf8proc_int32_t c)
{
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

bool isControl(utf8proc_int32_t c)
{
    return utf8proc_category(c) == UTF8PROC_CATEGORY_CC;
}

}  // namespace

bool operator==(const Text& a, const Text& b)
{
    if (a.utf8_ == b.utf8_)
        return true;
    if (isAscii(a.utf8_) && isAscii(b.utf8_))
        return false;
    return decomposed(a.utf8_) == decomposed(b.utf8_);
}

std::strong_ordering operator<=>(const Text& a, const Text& b)
{
    if (isAscii(a.utf8_) && isAscii(b.utf8_))
        return a.utf8_ <=> b.utf8_;
    return decomposed(a.utf8_) <=> decomposed(b.utf8_);
}

std::string lowercased(std::string_view utf8)
{
    constexpr utf8proc_int32_t dottedCapitalI = 0x130;  // the one letter whose lower case is two code points
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const CodePoint c = codePointAt(utf8, at);
        if (c.value < 0)
            out += utf8[at];
        else if (c.value == dottedCapitalI)
            out += "i\u0307";
        else
            append(out, utf8proc_tolower(c.value));
        at += c.length;
    }
    return out;
}

std::string_view trimmed(std::string_view utf8)
{
    return trimmedOf(utf8, isWhiteSpace);
}

std::string_view trimmedBlanks(std::string_view utf8)
{
    return trimmedOf(utf8, isBlank);
}

std::string_view firstWord(std::string_view utf8)
{
    std::size_t begin = std::string_view::npos;
    for (std::size_t at = 0; at < utf8.size();) {
        const CodePoint c = codePointAt(utf8, at);
        const bool white = isWhiteSpace(c.value);
        if (!white && begin == std::string_view::npos)
            begin = at;
        if (white && begin != std::string_view::npos)
            return utf8.substr(begin, at - begin);
        at += c.length;
    }
    return begin == std::string_view::npos ? std::string_view() : utf8.substr(begin);
}

bool isValidUtf8(std::string_view bytes)
{
    for (std::size_t at = 0; at < bytes.size();) {
        const CodePoint c = codePointAt(bytes, at);
        if (c.value < 0)
            return false;
        at += c.length;
    }
    return true;
}

std::string replacingAll(std::string_view text, std::string_view from, std::string_view to)
{
    std::string out;
    std::size_t at = 0;
    for (std::size_t hit; !from.empty() && (hit = text.find(from, at)) != std::string_view::npos;
         at = hit + from.size())
        out.append(text, at, hit - at).append(to);
    return out.append(text, at);
}

std::string displayLine(std::string_view text, std::size_t maxCharacters)
{
    constexpr utf8proc_int32_t replacement = 0xFFFD;
    constexpr utf8proc_int32_t ellipsis = 0x2026;
    std::string out;
    std::size_t lastCharacter = 0;
    std::size_t characters = 0;
    bool blankPending = false;
    const auto put = [&](utf8proc_int32_t c) {
        lastCharacter = out.size();
        append(out, c);
        ++characters;
    };
    for (std::size_t at = 0; at < text.size();) {
        const CodePoint c = codePointAt(text, at);
        at += c.length;
        if (c.value >= 0 && reordersText(c.value))
            continue;
        if (c.value >= 0 && (isWhiteSpace(c.value) || isControl(c.value))) {
            blankPending = !out.empty();
            continue;
        }
        if (characters + (blankPending ? 1 : 0) >= maxCharacters) {
            if (characters >= maxCharacters)
                out.resize(lastCharacter);
            append(out, ellipsis);
            return out;
        }
        if (blankPending)
            put(' ');
        blankPending = false;
        put(c.value < 0 ? replacement : c.value);
    }
    return out;
}

}  // namespace quenchly
