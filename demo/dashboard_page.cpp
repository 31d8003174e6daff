#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <utility>

#include "dashboard.h"
#include "markup.h"
#include "text.h"
#include "wind_palette.h"

namespace quenchly::demo {
namespace {

constexpr std::size_t mostEntries = 50;

constexpr const char* styleSheet = R"(
:root { color-scheme: dark; --ink: #f7f1e4; --muted: #c9bda6; --line: #4a3f2e; --card: #241e17; --track: #3a3124;
        --calm: CALM; --watch: WATCH; --hold: HOLD; --off: OFF; }
* { box-sizing: border-box; margin: 0; }
body { background: #1a1611; color: var(--ink); font: 16px/1.45 system-ui, sans-serif; padding: 32px 16px; }
main, footer { max-width: 680px; margin: 0 auto; }
header { border-left: 4px solid var(--tone); padding-left: 16px; margin-bottom: 24px; }
h1 { font-size: 26px; line-height: 1.2; letter-spacing: -0.01em; }
header p, footer { color: var(--muted); font-size: 14px; margin-top: 6px; }
section { background: var(--card); border: 1px solid var(--line); border-radius: 12px; padding: 16px; margin-top: 12px; }
h2 { font-size: 14px; font-weight: 600; color: var(--muted); margin-bottom: 8px; }
dl { display: grid; grid-template-columns: 8em 1fr 3.5em; gap: 10px 12px; align-items: center; }
dd:last-of-type, .figure { text-align: right; font-variant-numeric: tabular-nums; }
svg { display: block; width: 100%; height: 8px; border-radius: 4px; background: var(--track); }
rect { fill: var(--calm); }
.high rect { fill: var(--hold); }
ul { list-style: none; padding: 0; }
li { padding: 6px 0; overflow-wrap: anywhere; }
li + li { border-top: 1px solid var(--line); }
li span { display: block; color: var(--muted); font-size: 14px; }
.calm { --tone: var(--calm); } .watch { --tone: var(--watch); } .hold { --tone: var(--hold); } .off { --tone: var(--off); }
footer { overflow-wrap: anywhere; margin-top: 20px; }
)";

constexpr const char* script = R"(
const note = document.getElementById("note");
setInterval(async () => {
  try {
    const answer = await fetch("/", { cache: "no-store" });
    const next = new DOMParser().parseFromString(await answer.text(), "text/html").querySelector("main");
    const shown = document.querySelector("main");
    if (next && next.outerHTML !== shown.outerHTML) shown.replaceWith(next);
    note.textContent = "";
  } catch {
    note.textContent = "The dashboard has ended. What is shown is old.";
  }
}, 2000);
)";

std::string style()
{
    std::string text = styleSheet;
    const std::pair<const char*, std::uint32_t> colors[] = {{"CALM", WindPalette::blue},
                                                            {"WATCH", WindPalette::muted},
                                                            {"HOLD", WindPalette::amber},
                                                            {"OFF", WindPalette::clay}};
    for (const auto& [name, rgb] : colors) {
        std::array<char, 8> color{};
        std::snprintf(color.data(), color.size(), "#%06x", rgb);
        text = replacingAll(text, name, color.data());
    }
    return text;
}

std::string meter(const char* name, std::optional<double> percent)
{
    const std::string label = std::string("<dt>") + name + "</dt>";
    if (!percent)
        return label + "<dd></dd><dd class=\"figure\">n/a</dd>";
    const std::string value = std::to_string(std::lround(*percent));
    return label + "<dd" + (*percent >= 90 ? " class=\"high\"" : "") +
           "><svg viewBox=\"0 0 100 1\" preserveAspectRatio=\"none\" aria-hidden=\"true\"><rect width=\"" + value +
           "\" height=\"1\"/></svg></dd><dd class=\"figure\">" + value + "%</dd>";
}

std::string section(const std::string& heading, const std::vector<SituationEntry>& entries)
{
    if (entries.empty())
        return {};
    std::string html = "<section><h2>" + escaped(heading) + "</h2><ul>";
    for (std::size_t i = 0; i < std::min(entries.size(), mostEntries); ++i)
        html += "<li>" + escaped(entries[i].name) + "<span>" + escaped(entries[i].note) + "</span></li>";
    if (entries.size() > mostEntries)
        html += "<li>and " + std::to_string(entries.size() - mostEntries) + " more</li>";
    return html + "</ul></section>";
}

std::string tip(const std::string& text)
{
    return text.empty() ? std::string() : "<section><h2>Extra memory</h2><p>" + escaped(text) + "</p></section>";
}

std::string content(const Situation& situation)
{
    return "<main class=\"" + escaped(situation.tone) + "\"><header><h1>" + escaped(situation.headline) +
           "</h1><p>Protection " + escaped(situation.protection) + " · last check " + escaped(situation.lastCheck) +
           "</p></header><section><dl>" + meter("Load", situation.loadPercent) + meter("Swap", situation.swapPercent) +
           "</dl></section>" + section("Held in place", situation.held) + section("Eased back", situation.slowed) +
           section("Set aside", situation.setAside) + tip(situation.memoryReliefTip) + "</main>";
}

}  // namespace

std::string dashboardPage(const Situation& situation, const std::string& file, const std::string& nonce)
{
    return "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>Quenchly</title>"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"><style nonce=\"" +
           nonce + "\">" + style() + "</style></head>\n<body>" + content(situation) +
           "\n<footer><p id=\"note\" role=\"status\"></p><p>A stand-in for the checker, reading " + escaped(file) +
           "</p></footer><script nonce=\"" + nonce + "\">" + script + "</script></body></html>\n";
}

}  // namespace quenchly::demo
