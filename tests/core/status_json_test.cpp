#include "status_json.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace quenchly {
namespace {

TEST(StatusJson, EveryFieldInDeclarationOrder)
{
    const QuenchStatus status{
        .icon = QuenchIcon::protect,
        .barTint = QuenchBarTint::hotWatch,
        .headline = "Überlast \"quoted\"",
        .detail = "load 20%",
        .lastCheckISO = "2026-03-01T12:00:00Z",
        .lastCheckAge = "42s ago",
        .pausedTargets = {{.label = "Ollama", .pid = 812, .pausedAt = "t", .reason = "r"}, {.label = "MLX"}},
        .quarantine =
            {{.id = "q", .kind = "launchd", .cmd = "c", .quarantinedAt = "t", .reason = "r", .acknowledged = true}},
        .tone = QuenchTone::watch,
        .observeOnly = true,
        .managementDisabled = false,
        .metricsLine = "load 20%",
        .lastMetrics = LastMetrics{.load1 = 1.5,
                                   .swapPct = 31.6,
                                   .swapUsedMB = std::nullopt,
                                   .cpuCount = 8,
                                   .cpuLoadPct = 19,
                                   .swapCritical = true,
                                   .menubarLine = "load 20%"},
        .swapCritical = true,
        .stillOverloaded = true,
        .slowActive = false,
        .agentInstalled = true,
        .memoryReliefTip = "tip",
    };
    EXPECT_EQ(statusJson(status),
              R"({"icon":"protect","barTint":"hotWatch","headline":"Überlast \"quoted\"","detail":"load 20%",)"
              R"("lastCheckISO":"2026-03-01T12:00:00Z","lastCheckAge":"42s ago",)"
              R"("pausedTargets":[{"label":"Ollama","pid":812,"pausedAt":"t","reason":"r"},)"
              R"({"label":"MLX","pid":0,"pausedAt":"","reason":""}],)"
              R"("quarantine":[{"id":"q","kind":"launchd","cmd":"c","quarantinedAt":"t","reason":"r",)"
              R"("acknowledged":true}],"tone":"watch","observeOnly":true,"managementDisabled":false,)"
              R"("metricsLine":"load 20%","lastMetrics":{"load1":1.5,"swapPct":31.6,"swapUsedMB":null,"cpuCount":8,)"
              R"("cpuLoadPct":19,"swapCritical":true,"menubarLine":"load 20%"},"swapCritical":true,)"
              R"("stillOverloaded":true,"slowActive":false,"agentInstalled":true,"memoryReliefTip":"tip"})");
}

TEST(StatusJson, WhatIsAbsentIsNullAndListsStayLists)
{
    EXPECT_EQ(
        statusJson(QuenchStatus()),
        R"({"icon":"stale","barTint":"waiting","headline":"","detail":"","lastCheckISO":null,"lastCheckAge":"",)"
        R"("pausedTargets":[],"quarantine":[],"tone":null,"observeOnly":false,"managementDisabled":false,)"
        R"("metricsLine":null,"lastMetrics":null,"swapCritical":false,"stillOverloaded":false,"slowActive":false,)"
        R"("agentInstalled":false,"memoryReliefTip":null})");
}

TEST(StatusJson, AnyTextStaysOnOneLine)
{
    const std::string json =
        statusJson({.headline = "a\nb\r\tc\x1b[0m\x7f</script>", .detail = std::string("a\0b", 3)});
    EXPECT_NE(json.find(R"("headline":"a\nb\r\tc\u001b[0m)"), std::string::npos) << json;
    EXPECT_NE(json.find(R"("detail":"a\u0000b")"), std::string::npos) << json;
    EXPECT_EQ(json.find('\n'), std::string::npos);
}

TEST(StatusJson, InvalidUtf8IsReplaced)
{
    EXPECT_NE(statusJson({.headline = "a\xFF"
                                      "b"})
                  .find("\"headline\":\"a\uFFFDb\""),
              std::string::npos);
}

TEST(StatusJson, AFigureThatJsonCannotHoldIsNull)
{
    const std::string json =
        statusJson({.lastMetrics = LastMetrics{.load1 = std::numeric_limits<double>::infinity(),
                                               .swapPct = std::numeric_limits<double>::quiet_NaN()}});
    EXPECT_NE(json.find(R"("load1":null,"swapPct":null)"), std::string::npos) << json;
}

}  // namespace
}  // namespace quenchly
