#include <gtest/gtest.h>

#include <QNetworkProxy>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "command_runner.h"
#include "dashboard.h"
#include "recorded_tool.h"
#include "scripted_server.h"
#include "scripted_system.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::ScriptedServer;
using Connection = ScriptedServer::Connection;
using Clock = std::chrono::steady_clock;

const std::string ours = R"({"file":"/home/user/state/heat-state.json"})";

constexpr std::size_t largestAnswer = std::size_t{4} << 20;

ScriptedServer answering(const std::string& response)
{
    return ScriptedServer([response](Connection& connection) {
        connection.request();
        connection.send(response);
    });
}

/// A server has a time to answer in, for which a machine can be too busy: then it is asked again.
bool isFoundHealthy(std::uint16_t port)
{
    return testing::eventually([port] { return CLIRunner::dashboardLooksHealthy(port); });
}

struct Answer {
    const char* name;
    std::string bytes;
    bool healthy = false;
};

TEST(DashboardProbe, OnlyACompleteAnswerOfOursIsHealthy)
{
    const std::string unfinished = ScriptedServer::response(ours + std::string(100, ' '));
    const Answer answers[] = {
        {.name = "ours", .bytes = ScriptedServer::response(ours), .healthy = true},
        {.name = "ours without a length", .bytes = "HTTP/1.1 200 OK\r\n\r\n" + ours, .healthy = true},
        {.name = "ours in pieces",
         .bytes = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nheat-\r\na\r\nstate.json\r\n0\r\n\r\n",
         .healthy = true},
        {.name = "ours of 4 MiB",
         .bytes = ScriptedServer::response(ours + std::string(largestAnswer - ours.size(), ' ')),
         .healthy = true},
        {"a byte more", ScriptedServer::response(ours + std::string(largestAnswer + 1 - ours.size(), ' '))},
        {"another body", ScriptedServer::response(R"({"status":"ok"})")},
        {"the name in other letters", ScriptedServer::response("Heat-State.json")},
        {"no body", ScriptedServer::response("")},
        {"created", ScriptedServer::response(ours, "201 Created")},
        {"no content", "HTTP/1.1 204 No Content\r\nX: heat-state.json\r\n\r\n"},
        {"not found", ScriptedServer::response(ours, "404 Not Found")},
        {"failure", ScriptedServer::response(ours, "500 Internal Server Error")},
        {"not UTF-8", ScriptedServer::response(ours + "\xFF")},
        {"half a character", ScriptedServer::response(ours + "\xE6\x97")},
        {"closed before the end", unfinished.substr(0, unfinished.size() - 100)},
        {"closed within the headers", "HTTP/1.1 200 OK\r\nContent-Le"},
        {"closed at once", ""},
        {"garbage", "\x01\x02heat-state.json\r\n\r\n" + ours},
        {"another protocol", "220 mail.example ESMTP\r\n" + ours},
    };
    for (const auto& [name, bytes, healthy] : answers) {
        const ScriptedServer server = answering(bytes);
        EXPECT_TRUE(healthy ? isFoundHealthy(server.port()) : !CLIRunner::dashboardLooksHealthy(server.port())) << name;
        EXPECT_GE(server.connections(), 1) << name;
    }
}

TEST(DashboardProbe, AsksForTheStatus)
{
    std::string request;
    {
        const ScriptedServer server([&](Connection& connection) {
            request = connection.request();
            connection.send(ScriptedServer::response(ours));
        });
        EXPECT_TRUE(isFoundHealthy(server.port()));
    }
    EXPECT_TRUE(request.starts_with("GET /api/status HTTP/1.1\r\n")) << request;
}

TEST(DashboardProbe, NobodyListeningIsUnhealthy)
{
    EXPECT_FALSE(CLIRunner::dashboardLooksHealthy(testing::unusedPort()));
}

struct SlowServer {
    const char* name;
    std::chrono::milliseconds patience;  ///< the probe waits for at least this long
    std::function<void(Connection&)> answer;
};

void sayNothing(Connection& connection)
{
    connection.closesWithin(10min);
}

void dripAByteASecond(Connection& connection)
{
    for (const char byte : ScriptedServer::response(ours + std::string(200, ' ')))
        if (!connection.send({&byte, 1}) || connection.closesWithin(1s))
            return;
}

void answerAfterFiveSeconds(Connection& connection)
{
    connection.request();
    connection.send("HTTP/1.1 200 OK\r\n\r\n");
    for (int i = 0; i < 50; ++i)
        if (!connection.send(" ") || connection.closesWithin(100ms))
            return;
    connection.send(ours);
}

void neverEndTheBody(Connection& connection)
{
    connection.request();
    connection.send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n" + ours);
    sayNothing(connection);
}

void dripAfterTheBody(Connection& connection)
{
    connection.request();
    connection.send("HTTP/1.1 200 OK\r\n\r\n" + ours);
    while (connection.send(" ") && !connection.closesWithin(100ms)) {
    }
}

void neverEndTheHeaders(Connection& connection)
{
    connection.request();
    connection.send("HTTP/1.1 200 OK\r\n");
    while (connection.send("X-More: and more\r\n") && !connection.closesWithin(1ms)) {
    }
}

TEST(DashboardProbe, NoServerHoldsItUp)
{
    const SlowServer servers[] = {
        {.name = "says nothing", .patience = 1400ms, .answer = sayNothing},
        {.name = "drips a byte a second", .patience = 1400ms, .answer = dripAByteASecond},
        {.name = "never ends the body", .patience = 1400ms, .answer = neverEndTheBody},
        {.name = "drips after the body", .patience = 1900ms, .answer = dripAfterTheBody},
        {.name = "never ends the headers", .patience = 0ms, .answer = neverEndTheHeaders},
    };
    // All at once, each in a thread of its own, because each takes the whole time.
    std::vector<std::thread> probes;
    for (const SlowServer& slow : servers)
        probes.emplace_back([&slow] {
            const ScriptedServer server(slow.answer);
            const auto start = Clock::now();
            EXPECT_FALSE(CLIRunner::dashboardLooksHealthy(server.port())) << slow.name;
            EXPECT_GE(Clock::now() - start, slow.patience) << slow.name;
        });
    for (std::thread& probe : probes)
        probe.join();
}

TEST(DashboardProbe, AnAnswerAfterFiveSecondsIsTooLate)
{
    const ScriptedServer server(answerAfterFiveSeconds);
    const auto start = Clock::now();
    // A busy machine may need more than one attempt.
    EXPECT_TRUE(testing::eventually([&] { return !CLIRunner::dashboardLooksHealthy(server.port()); }));
    EXPECT_GE(Clock::now() - start, 1900ms);
}

TEST(DashboardProbe, SilenceEndsItBeforeItsWholeTimeIsOver)
{
    const ScriptedServer server(sayNothing);
    // A busy machine may need more than one attempt.
    EXPECT_TRUE(testing::eventually([&] {
        const auto start = Clock::now();
        EXPECT_FALSE(CLIRunner::dashboardLooksHealthy(server.port()));
        return Clock::now() - start < 1900ms;
    }));
}

TEST(DashboardProbe, StopsReadingAGigabyteEarly)
{
    constexpr std::size_t gigabyte = std::size_t{1} << 30;
    for (const char* length : {"", "Content-Length: 1073741824\r\n"}) {
        std::size_t sent = 0;
        {
            const ScriptedServer server([&](Connection& connection) {
                connection.request();
                connection.send("HTTP/1.1 200 OK\r\n" + std::string(length) + "\r\n" + ours);
                const std::string megabyte(1 << 20, ' ');
                while (sent < gigabyte && connection.send(megabyte))
                    sent += megabyte.size();
            });
            EXPECT_FALSE(CLIRunner::dashboardLooksHealthy(server.port()));
        }
        EXPECT_LT(sent, gigabyte / 16) << "the rest filled the buffers of the sockets";
    }
}

ScriptedServer redirectingTo(const std::string& target)
{
    return ScriptedServer([target](Connection& connection) {
        if (connection.request().starts_with("GET /api/status "))
            connection.send("HTTP/1.1 302 Found\r\nLocation: " + target + "\r\nContent-Length: 0\r\n\r\n");
        else
            connection.send(ScriptedServer::response(ours));
    });
}

TEST(DashboardProbe, FollowsARedirectionOnTheSameServerOnly)
{
    const ScriptedServer elsewhere = answering(ScriptedServer::response(ours));
    const ScriptedServer here = redirectingTo("/api/status/now");
    EXPECT_TRUE(isFoundHealthy(here.port()));
    const ScriptedServer away = redirectingTo(dashboardAddress(elsewhere.port()) + "/api/status");
    EXPECT_FALSE(CLIRunner::dashboardLooksHealthy(away.port()));
    EXPECT_EQ(elsewhere.connections(), 0);
    const ScriptedServer circle = redirectingTo("/api/status");
    EXPECT_FALSE(CLIRunner::dashboardLooksHealthy(circle.port()));
}

TEST(DashboardProbe, UsesNoProxyEvenWhenTheApplicationHasOne)
{
    const ScriptedServer proxy = answering("");
    const ScriptedServer server = answering(ScriptedServer::response(ours));
    const QNetworkProxy before = QNetworkProxy::applicationProxy();
    QNetworkProxy::setApplicationProxy(
        QNetworkProxy(QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), proxy.port()));
    EXPECT_TRUE(isFoundHealthy(server.port()));
    QNetworkProxy::setApplicationProxy(before);
    EXPECT_EQ(proxy.connections(), 0);
}

TEST(DashboardProbe, LeavesNoDescriptor)
{
    const ScriptedServer server = answering(ScriptedServer::response(ours));
    EXPECT_TRUE(isFoundHealthy(server.port()));
    const int before = testing::openDescriptors();
    for (int i = 0; i < 20; ++i)
        EXPECT_TRUE(isFoundHealthy(server.port()));
    EXPECT_TRUE(testing::eventually([&] { return testing::openDescriptors() == before; }));
}

constexpr const char* servingScript = R"(#!/usr/bin/env node
setInterval(() => require('fs').existsSync(__filename) || process.exit(), 20).unref();
const server = require('http').createServer((request, response) => {
    response.setHeader('Connection', 'close');
    response.end('{"file":"/home/user/state/heat-state.json"}');
    server.close();
});
server.listen(process.env.SERVED_PORT, '127.0.0.1');
)";

class OpenDashboardTest : public ::testing::Test {
protected:
    testing::ScriptedSystem world;
    testing::RecordedTool tool{world.scratch};
    CLIRunner runner{.cli = testing::RecordedTool::program(),
                     .dataHome = world.dataHome(),
                     .homeFolder = world.home(),
                     .inheritedEnvironment = tool.environment(),
                     .openAddress = world.system().openAddress,
                     .portOwner = world.system().portOwner,
                     .log = world.system().log};

    std::vector<std::string> ourAddress() const { return {dashboardAddress(runner.dashboardPort)}; }
};

TEST_F(OpenDashboardTest, TheAddressIsTheLoopback)
{
    EXPECT_EQ(dashboardAddress(8280), "http://127.0.0.1:8280");
}

TEST_F(OpenDashboardTest, AHealthyDashboardIsOpenedWithoutStartingAnother)
{
    const ScriptedServer server = answering(ScriptedServer::response(ours));
    runner.dashboardPort = server.port();
    // Where the machine is too busy for the time that an answer has, another is started: then this tries again.
    EXPECT_TRUE(testing::eventually([&] {
        const std::size_t before = tool.runs().size();
        EXPECT_TRUE(runner.openDashboard());
        EXPECT_TRUE(testing::eventually(testing::hasNoChild));
        return tool.runs().size() == before;
    }));
    EXPECT_EQ(world.opened->all().front(), ourAddress().front());
}

TEST_F(OpenDashboardTest, AnotherUsersDashboardIsNotOpenedAndTheLogSaysSoOnce)
{
    if (!testing::anotherUser())
        GTEST_SKIP() << "only root can listen as another user";
    std::unique_ptr<ScriptedServer> server;
    {
        const testing::OrdinaryUser stranger;
        server = std::make_unique<ScriptedServer>([](Connection& connection) {
            connection.request();
            connection.send(ScriptedServer::response(ours));
        });
    }
    runner.dashboardPort = server->port();
    EXPECT_FALSE(runner.openDashboard());
    EXPECT_TRUE(world.opened->all().empty());
    EXPECT_EQ(world.log, std::vector<std::string>{strangersDashboard(runner.dashboardPort)});
    EXPECT_TRUE(testing::eventually(testing::hasNoChild)) << "a machine too busy for the first answer starts one";
}

TEST_F(OpenDashboardTest, OneThatComesWhileOursIsStartedIsNotOpenedEither)
{
    const ScriptedServer server([&](Connection& connection) {
        connection.request();
        connection.send(ScriptedServer::response(tool.hasEnded() ? ours : "starting"));
    });
    runner.dashboardPort = server.port();
    runner.portOwner = [](std::uint16_t) { return PortOwner::anotherUser; };
    EXPECT_FALSE(runner.openDashboard());
    EXPECT_EQ(tool.runs(), std::vector<CLIRunner::Arguments>{{"serve"}});
    EXPECT_TRUE(world.opened->all().empty());
    EXPECT_EQ(world.log.size(), 1u);
    EXPECT_TRUE(testing::eventually(testing::hasNoChild));
}

TEST_F(OpenDashboardTest, OneThatIsGoneAfterItsAnswerIsNotOpened)
{
    const ScriptedServer server = answering(ScriptedServer::response(ours));
    runner.dashboardPort = server.port();
    std::atomic<int> looks = 0;
    runner.portOwner = [&](std::uint16_t) { return ++looks == 1 ? PortOwner::nobody : PortOwner::thisUser; };
    EXPECT_TRUE(runner.openDashboard());
    EXPECT_EQ(looks, 2);
    EXPECT_EQ(world.opened->all(), ourAddress());
    EXPECT_TRUE(testing::eventually(testing::hasNoChild));
}

TEST_F(OpenDashboardTest, WhereTheSystemDoesNotTellWhoseItIsItIsOpened)
{
    const ScriptedServer server = answering(ScriptedServer::response(ours));
    runner.dashboardPort = server.port();
    runner.portOwner = [](std::uint16_t) { return PortOwner::unknown; };
    EXPECT_TRUE(runner.openDashboard());
    EXPECT_EQ(world.opened->all(), ourAddress());
    EXPECT_TRUE(testing::eventually(testing::hasNoChild));
}

TEST_F(OpenDashboardTest, ADashboardThatAnswersOnceItIsStartedIsOpened)
{
    const ScriptedServer server([&](Connection& connection) {
        connection.request();
        connection.send(ScriptedServer::response(tool.hasEnded() ? ours : "starting"));
    });
    runner.dashboardPort = server.port();
    EXPECT_TRUE(runner.openDashboard());
    EXPECT_EQ(tool.runs(), std::vector<CLIRunner::Arguments>{{"serve"}});
    EXPECT_EQ(world.opened->all(), ourAddress());
    EXPECT_TRUE(testing::eventually(testing::hasNoChild));
}

TEST_F(OpenDashboardTest, ARealNodeServesTheDashboardThatIsOpened)
{
    const auto node = testing::onSearchPath("node");
    if (!node)
        GTEST_SKIP() << "there is no node on this machine's search path";
    world.scratch.makeLink("tool/node", *node);
    // Its port may be another program's meanwhile, and a machine can be too busy for the time that it has to start.
    EXPECT_TRUE(testing::eventually([&] {
        runner.cli = world.scratch.write("tool/quenchly", servingScript);
        runner.dashboardPort = testing::unusedPort();
        runner.inheritedEnvironment["SERVED_PORT"] = std::to_string(runner.dashboardPort);
        const bool opened = runner.openDashboard();
        if (!opened)
            fs::remove(runner.cli);
        EXPECT_TRUE(testing::eventually(testing::hasNoChild)) << "it ends after its first answer, or with its script";
        return opened;
    }));
    EXPECT_EQ(world.opened->all(), ourAddress());
}

TEST_F(OpenDashboardTest, GivesUpAfterEightSecondsWhateverAnswers)
{
    const std::function<void(Connection&)> others[] = {
        [](Connection& connection) {
            connection.request();
            connection.send(ScriptedServer::response("another server"));
        },
        sayNothing,
        dripAByteASecond,
    };
    runner.inheritedEnvironment = tool.environment("hang");
    std::vector<std::thread> attempts;
    for (const auto& answer : others)
        attempts.emplace_back([&answer, runner = runner]() mutable {
            const ScriptedServer server(answer);
            runner.dashboardPort = server.port();
            const auto start = Clock::now();
            EXPECT_FALSE(runner.openDashboard());
            EXPECT_GE(Clock::now() - start, 7900ms);
            EXPECT_GE(server.connections(), 2);
        });
    for (std::thread& attempt : attempts)
        attempt.join();
    EXPECT_TRUE(world.opened->all().empty());
    EXPECT_EQ(tool.runs(), (std::vector<CLIRunner::Arguments>{{"serve"}, {"serve"}, {"serve"}}));
    EXPECT_FALSE(tool.hasEnded()) << "the servers that were started keep running";
    for (std::size_t i = 0; i < attempts.size(); ++i)
        tool.release();
    EXPECT_TRUE(testing::eventually(testing::hasNoChild));
}

TEST_F(OpenDashboardTest, AToolThatCannotBeStartedEndsItAtOnce)
{
    const ScriptedServer server = answering(ScriptedServer::response("another server"));
    runner.dashboardPort = server.port();
    runner.cli = world.scratch / "missing";
    EXPECT_FALSE(runner.openDashboard());
    EXPECT_EQ(server.connections(), 1);
    EXPECT_TRUE(world.opened->all().empty());
}

}  // namespace
}  // namespace quenchly
