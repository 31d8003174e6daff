#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "patience.h"
#include "spawning.h"
#include "test_files.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using quenchly::testing::contentOf;
using quenchly::testing::environmentWithoutOurs;
using quenchly::testing::pointersTo;
using quenchly::testing::ScratchFolder;
using quenchly::testing::Words;

/// The tool, running; its output is read as it comes.
class Tool {
public:
    Tool(const fs::path& home, const std::string& port, Words arguments = {"serve"})
    {
        arguments.insert(arguments.begin(), QUENCHLY_DEMO_TOOL_PATH);
        Words environment = environmentWithoutOurs();
        environment.push_back("QUENCHLY_HOME=" + home.string());
        environment.push_back("QUENCHLY_LAUNCH_AGENTS=" + (home / "agents").string());
        environment.push_back("QUENCHLY_DASHBOARD_PORT=" + port);
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe(ends.data()), 0);
        output_ = ends[0];
        ::fcntl(output_, F_SETFD, FD_CLOEXEC);
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
        ::posix_spawn_file_actions_addclose(&actions, ends[1]);
        // A test program started by one that ignores SIGPIPE would hide that the tool must.
        posix_spawnattr_t attributes;
        ::posix_spawnattr_init(&attributes);
        sigset_t usual;
        ::sigemptyset(&usual);
        ::sigaddset(&usual, SIGPIPE);
        ::posix_spawnattr_setsigdefault(&attributes, &usual);
        ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
        EXPECT_EQ(::posix_spawn(&pid_, QUENCHLY_DEMO_TOOL_PATH, &actions, &attributes, pointersTo(arguments).data(),
                                pointersTo(environment).data()),
                  0);
        ::posix_spawnattr_destroy(&attributes);
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
    }
    Tool(const Tool&) = delete;
    Tool& operator=(const Tool&) = delete;
    ~Tool()
    {
        ::close(output_);
        if (pid_ == 0)
            return;
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }

    /// The next line; what there is at the end of the output.
    std::string line() const
    {
        std::string text;
        char character = 0;
        while (::read(output_, &character, 1) == 1) {
            text += character;
            if (character == '\n')
                break;
        }
        return text;
    }

    int finish()
    {
        int state = 0;
        EXPECT_EQ(::waitpid(pid_, &state, 0), pid_);
        pid_ = 0;
        return WIFEXITED(state) ? WEXITSTATUS(state) : -1;
    }

private:
    ::pid_t pid_ = 0;
    int output_ = -1;
};

sockaddr_in addressOf(const char* host, int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    ::inet_pton(AF_INET, host, &address.sin_addr);
    return address;
}

class Client {
public:
    explicit Client(int port, const char* host = "127.0.0.1") : socket_(::socket(AF_INET, SOCK_STREAM, 0))
    {
        ::signal(SIGPIPE, SIG_IGN);
        const timeval longEnough{.tv_sec = quenchly::testing::patience / 1000, .tv_usec = 0};
        ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &longEnough, sizeof longEnough);
        const int smallBuffer = 4096;
        ::setsockopt(socket_, SOL_SOCKET, SO_RCVBUF, &smallBuffer, sizeof smallBuffer);
        const sockaddr_in address = addressOf(host, port);
        connected_ = ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    ~Client() { ::close(socket_); }

    bool isConnected() const { return connected_; }

    void send(const std::string& text) const
    {
        ASSERT_EQ(::send(socket_, text.data(), text.size(), 0), static_cast<::ssize_t>(text.size()));
    }

    std::string everything() const
    {
        std::string text;
        std::array<char, 4096> buffer;
        ::ssize_t count = 0;
        while ((count = ::recv(socket_, buffer.data(), buffer.size(), 0)) > 0)
            text.append(buffer.data(), static_cast<std::size_t>(count));
        return count == 0 ? text : "cut off";
    }

    std::string firstByte() const
    {
        char byte = 0;
        return ::recv(socket_, &byte, 1, 0) == 1 ? std::string{byte} : std::string();
    }

    void finishSending() const { ::shutdown(socket_, SHUT_WR); }

    /// Ends the connection with a reset instead of a farewell.
    void slam() const
    {
        const linger atOnce{.l_onoff = 1, .l_linger = 0};
        ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    }

private:
    int socket_;
    bool connected_;
};

struct Answer {
    int status = 0;
    std::string head;
    std::string body;
};

Answer parsedAnswer(const std::string& text)
{
    const std::size_t end = text.find("\r\n\r\n");
    if (!text.starts_with("HTTP/1.1 ") || end == std::string::npos)
        return {};
    return {.status = std::stoi(text.substr(9, 3)), .head = text.substr(0, end + 2), .body = text.substr(end + 4)};
}

class Dashboard : public testing::Test {
protected:
    void serve()
    {
        tool = std::make_unique<Tool>(home(), "0");
        const std::string line = tool->line();
        const std::string address = "the dashboard is at http://127.0.0.1:";
        ASSERT_TRUE(line.starts_with(address)) << line;
        port = std::stoi(line.substr(address.size()));
    }

    void play(const std::string& scenario) const { run({"scenario", scenario}); }

    void run(const Words& arguments) const { ASSERT_EQ(Tool(home(), "0", arguments).finish(), 0) << arguments.front(); }

    Answer ask(const std::string& request) const
    {
        const Client client(port);
        client.send(request);
        return parsedAnswer(client.everything());
    }

    Answer get(const std::string& path) const { return ask("GET " + path + " HTTP/1.1\r\nHost: localhost\r\n\r\n"); }

    fs::path home() const { return scratch / "home"; }
    fs::path heatFile() const { return home() / "state/heat-state.json"; }
    void writeHeat(const std::string& text) const { scratch.replace("home/state/heat-state.json", text); }

    ScratchFolder scratch;
    std::unique_ptr<Tool> tool;
    int port = 0;
};

TEST_F(Dashboard, TellsTheApplicationThatItIsTheDashboard)
{
    play("holding");
    serve();
    const Answer answer = get("/api/status");
    EXPECT_EQ(answer.status, 200);
    EXPECT_NE(answer.head.find("Content-Type: application/json\r\n"), std::string::npos) << answer.head;
    const json document = json::parse(answer.body, nullptr, false);
    EXPECT_EQ(document.at("file"), heatFile().string());
    EXPECT_EQ(document.at("state"), json::parse(contentOf(heatFile())));
    EXPECT_EQ(document.at("protectMode").at("mode"), "pause");
}

TEST_F(Dashboard, ShowsThePresentStateOnEveryRequest)
{
    play("holding");
    serve();
    EXPECT_NE(get("/").body.find("<h1>Holding local AI until pressure drops</h1>"), std::string::npos);
    EXPECT_NE(get("/").body.find("<li>ollama<span>Load 97% of 8 CPUs"), std::string::npos) << get("/").body;
    EXPECT_NE(get("/").body.find("94%"), std::string::npos);
    run({"disable"});
    EXPECT_NE(get("/").body.find("Protection Off"), std::string::npos);
    EXPECT_TRUE(json::parse(get("/api/status").body).at("managed").contains("disabledAt"));
    play("set-aside");
    EXPECT_NE(get("/").body.find("<h2>Set aside</h2>"), std::string::npos);
    EXPECT_EQ(get("/").body.find("Held in place"), std::string::npos);
    run({"quarantine", "ack", "lmstudio-service"});
    EXPECT_EQ(get("/").body.find("ai.lmstudio.headless"), std::string::npos);
}

TEST_F(Dashboard, ShowsEverySituationInWords)
{
    play("calm");
    serve();
    const std::vector<std::pair<std::string, std::string>> headlines{
        {"calm", "Calm"},
        {"overload", "Overload"},
        {"easing", "Easing local AI"},
        {"false-heat", "Busy, but not overloaded"},
        {"swap-critical", "Holding local AI until pressure drops"},
        {"stale", "No check for a while"},
        {"protection-off", "Protection is off"},
    };
    for (const auto& [scenario, headline] : headlines) {
        play(scenario);
        EXPECT_NE(get("/").body.find("<h1>" + headline + "</h1>"), std::string::npos) << scenario;
    }
}

TEST_F(Dashboard, FetchesItselfAgain)
{
    serve();
    const Answer page = get("/");
    EXPECT_NE(page.body.find("setInterval("), std::string::npos);
    EXPECT_NE(page.head.find("script-src 'nonce-"), std::string::npos);
    const std::size_t nonce = page.head.find("script-src 'nonce-") + 18;
    EXPECT_NE(page.body.find("<script nonce=\"" + page.head.substr(nonce, 32) + "\">"), std::string::npos);
    EXPECT_NE(get("/").head.substr(nonce, 32), page.head.substr(nonce, 32));
}

TEST_F(Dashboard, NoTextOfAFileBecomesMarkup)
{
    const std::string evil = "\"'></span><script>alert(1)</script>&lt;\x01";
    const json entry{{"id", "a"}, {"cmd", evil}, {"reason", evil}, {"quarantinedAt", evil}};
    writeHeat(json{
        {"lastCheck", evil},
        {"memoryReliefTip", evil},
        {"paused", {{{"label", evil}, {"reason", evil}}}},
        {"quarantined",
         {entry}}}.dump());
    scratch.write("home/state/throttle.json", json{{"targets", {{{"label", evil}}}}}.dump());
    serve();
    const std::string page = get("/").body;
    EXPECT_EQ(page.find("<script>alert"), std::string::npos);
    EXPECT_EQ(page.find("\"'>"), std::string::npos);
    std::size_t shown = 0;
    const std::string plain = "&quot;&#39;&gt;&lt;/span&gt;&lt;script&gt;alert(1)&lt;/script&gt;&amp;lt;\xEF\xBF\xBD";
    for (std::size_t at = page.find(plain); at != std::string::npos; at = page.find(plain, at + 1))
        ++shown;
    EXPECT_EQ(shown, 8U) << page;
}

TEST_F(Dashboard, UnusableFilesAreNoState)
{
    serve();
    const auto expectNone = [&](const char* what) {
        EXPECT_TRUE(json::parse(get("/api/status").body).at("state").is_null()) << what;
        EXPECT_NE(get("/api/status").body.find("heat-state.json"), std::string::npos) << what;
        EXPECT_NE(get("/").body.find("<h1>No check yet</h1>"), std::string::npos) << what;
    };
    expectNone("missing");
    for (const char* text : {"", "{", "[1]", "{\"lastCheck\": \"\xff\"}"}) {
        writeHeat(text);
        expectNone(text);
    }
    writeHeat("{\"fill\": \"" + std::string(3'000'000, 'x') + "\"}");
    expectNone("endless");
    fs::remove(heatFile());
    scratch.makeFifo("home/state/heat-state.json");
    expectNone("a FIFO");
}

TEST_F(Dashboard, ValuesOfWrongTypesAreLeftOut)
{
    writeHeat(R"({"lastCheck": 7, "paused": {"a": 1}, "quarantined": [7, null, {"cmd": []}], "lastMetrics": [1],
                  "slowActive": "yes", "hot": 1, "thermalTruth": null, "memoryReliefTip": {}})");
    serve();
    EXPECT_NE(get("/").body.find("<h1>No check for a while</h1>"), std::string::npos);
    EXPECT_NE(get("/").body.find("n/a"), std::string::npos);
}

TEST_F(Dashboard, AbsurdNestingAndFiguresAreSurvived)
{
    const std::string deep = std::string(200'000, '[') + std::string(200'000, ']');
    writeHeat(R"({"lastMetrics": {"cpuLoadPct": 1e300, "swapPct": -5}, "fill": )" + deep + "}");
    serve();
    EXPECT_EQ(json::parse(get("/api/status").body).at("state").at("lastMetrics").at("swapPct"), -5);
    EXPECT_NE(get("/").body.find("100%"), std::string::npos);
    EXPECT_NE(get("/").body.find("0%"), std::string::npos);
}

TEST_F(Dashboard, ALongListIsCut)
{
    json entries = json::array();
    for (int i = 0; i < 5000; ++i)
        entries.push_back({{"label", "target" + std::to_string(i)}});
    writeHeat(json{{"paused", entries}}.dump());
    serve();
    EXPECT_NE(get("/").body.find("and 4950 more"), std::string::npos);
    EXPECT_EQ(get("/").body.find("target50<"), std::string::npos);
}

// The protocol

TEST_F(Dashboard, HeadIsGetWithoutTheBody)
{
    play("calm");
    serve();
    const Answer head = ask("HEAD /api/status HTTP/1.1\r\nHost: localhost\r\n\r\n");
    EXPECT_EQ(head.status, 200);
    EXPECT_EQ(head.body, "");
    EXPECT_EQ(head.head, get("/api/status").head);
}

TEST_F(Dashboard, RefusesWhatIsNotThere)
{
    scratch.write("secret", "secret");
    play("calm");
    serve();
    for (const char* path : {"/favicon.ico", "/api", "/api/status/", "//", "/../secret", "/../../../../../etc/passwd",
                             "/..%2fsecret", "/state/heat-state.json", "/api/status%00"}) {
        const Answer answer = get(path);
        EXPECT_EQ(answer.status, 404) << path;
        EXPECT_EQ(answer.body, "Not Found\n") << path;
    }
    EXPECT_EQ(get("/api/status?at=now").status, 200);
    EXPECT_EQ(get("/?").status, 200);
}

TEST_F(Dashboard, OnlyReadingIsAllowed)
{
    serve();
    for (const char* method : {"POST", "PUT", "DELETE", "OPTIONS", "TRACE", "get"}) {
        const Answer answer = ask(std::string(method) + " / HTTP/1.1\r\nHost: localhost\r\n\r\n");
        EXPECT_EQ(answer.status, 405) << method;
        EXPECT_NE(answer.head.find("Allow: GET, HEAD\r\n"), std::string::npos) << method;
    }
}

TEST_F(Dashboard, AnswersOnlyToThisMachinesOwnNames)
{
    serve();
    const auto statusFor = [&](const std::string& hostLines) {
        return ask("GET /api/status HTTP/1.1\r\n" + hostLines + "\r\n").status;
    };
    EXPECT_EQ(statusFor("Host: 127.0.0.1:" + std::to_string(port) + "\r\n"), 200);
    EXPECT_EQ(statusFor("hOST:LocalHost \r\n"), 200);
    EXPECT_EQ(statusFor("Host: rebound.example:8280\r\n"), 421);
    EXPECT_EQ(statusFor("Host: 127.0.0.1.rebound.example\r\n"), 421);
    EXPECT_EQ(statusFor("Host: localhost.\r\n"), 421);
    EXPECT_EQ(statusFor("Host:\r\n"), 421);
    EXPECT_EQ(statusFor(""), 400);
    EXPECT_EQ(statusFor("Host: localhost\r\nHost: rebound.example\r\n"), 400);
    EXPECT_FALSE(Client(port, "127.0.0.2").isConnected()) << "it listens on more than 127.0.0.1";
}

TEST_F(Dashboard, NoiseIsABadRequest)
{
    serve();
    for (const char* noise : {"\r\n\r\n", "GET\r\n\r\n", "GET / HTTP/2.0\r\nHost: localhost\r\n\r\n",
                              "GET  / HTTP/1.1\r\nHost: localhost\r\n\r\n", "\x16\x03\x01\x02\r\n\r\n",
                              "GET http://localhost/ HTTP/1.1\r\nHost: localhost\r\n\r\n"})
        EXPECT_EQ(ask(noise).status, 400) << noise;
    EXPECT_EQ(ask("GET / HTTP/1.1\r\nHost: localhost\r\nCookie: " + std::string(9000, 'x')).status, 431);
}

TEST_F(Dashboard, ARequestMayComeInPieces)
{
    serve();
    const Client client(port);
    for (const char character : std::string("GET /api/status HTTP/1.0\r\nHost: localhost\r\n\r\n"))
        client.send({character});
    EXPECT_EQ(parsedAnswer(client.everything()).status, 200);
}

TEST_F(Dashboard, WhoStillSendsGetsTheAnswerInsteadOfAReset)
{
    serve();
    const Client client(port);
    client.send("POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 200000\r\n\r\n");
    EXPECT_EQ(parsedAnswer(client.everything()).status, 405);
    for (int i = 0; i < 20; ++i)
        client.send(std::string(10'000, 'x'));
}

TEST_F(Dashboard, SilentAndSlowClientsHoldNobodyUp)
{
    writeHeat(json{{"lastCheck", "2025-03-02T10:15:00Z"}, {"fill", std::string(1'900'000, 'x')}}.dump());
    serve();
    std::vector<std::unique_ptr<Client>> idle;
    for (int i = 0; i < 150; ++i) {
        idle.push_back(std::make_unique<Client>(port));
        if (i % 3 == 1)
            idle.back()->send("GET / HT");
        if (i % 3 == 2)
            idle.back()->send("GET /api/status HTTP/1.1\r\nHost: localhost\r\n\r\n");  // and never reads
    }
    EXPECT_EQ(get("/").status, 200);
    EXPECT_GT(get("/api/status").body.size(), 1'900'000U);
}

TEST_F(Dashboard, ClientsThatBreakOffDoNotEndIt)
{
    // Too long for the buffers, so that it is still being sent when the client goes.
    writeHeat(json{{"fill", std::string(1'900'000, 'x')}}.dump());
    serve();
    for (int i = 0; i < 20; ++i) {
        const Client client(port);
        client.send("GET /api/status HTTP/1.1\r\nHost: localhost\r\n\r\n");
        client.finishSending();
        EXPECT_EQ(client.firstByte(), "H");
        client.slam();
    }
    EXPECT_EQ(get("/api/status").status, 200);
}

// The port

TEST_F(Dashboard, ASecondOneOfTheSameFolderIsContentWithTheFirst)
{
    play("calm");
    serve();
    Tool second(home(), std::to_string(port));
    EXPECT_EQ(second.line(), "the dashboard answers already at http://127.0.0.1:" + std::to_string(port) + "\n");
    EXPECT_EQ(second.finish(), 0);
}

TEST_F(Dashboard, AnotherFoldersDashboardIsNamed)
{
    serve();
    Tool second(scratch / "other", std::to_string(port));
    EXPECT_EQ(second.line(),
              "quenchly: port " + std::to_string(port) + " is taken by a dashboard of " + heatFile().string() + "\n");
    EXPECT_EQ(second.line(), "");
    EXPECT_EQ(second.finish(), 1);
}

TEST_F(Dashboard, APortThatAnotherProgramHasIsReported)
{
    const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = addressOf("127.0.0.1", 0);
    socklen_t size = sizeof address;
    ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), size), 0);
    ASSERT_EQ(::listen(listener, 1), 0);
    ASSERT_EQ(::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size), 0);
    const std::string taken = std::to_string(ntohs(address.sin_port));
    Tool refused(home(), taken);
    EXPECT_EQ(refused.line(), "quenchly: port " + taken + " is taken by another program\n");
    EXPECT_EQ(refused.line(), "");
    EXPECT_EQ(refused.finish(), 1);
    ::close(listener);
}

TEST_F(Dashboard, AWrongPortIsMisuse)
{
    for (const char* wrong : {"x", "-1", "70000", "80x", " 80"}) {
        Tool refused(home(), wrong);
        EXPECT_EQ(refused.line(), "quenchly: QUENCHLY_DASHBOARD_PORT is not a port\n") << wrong;
        EXPECT_EQ(refused.finish(), 2) << wrong;
    }
}

TEST_F(Dashboard, ItsPortIsFreeAgainAtOnce)
{
    play("calm");
    bool isFree = false;
    // Another program may be given the port meanwhile.
    for (int attempt = 0; attempt < 10 && !isFree; ++attempt) {
        serve();
        EXPECT_EQ(get("/").status, 200);
        tool.reset();
        const Tool next(home(), std::to_string(port));
        isFree = next.line() == "the dashboard is at http://127.0.0.1:" + std::to_string(port) + "\n";
    }
    EXPECT_TRUE(isFree);
}

TEST_F(Dashboard, EndsWithItsFolder)
{
    play("calm");
    serve();
    EXPECT_EQ(get("/").status, 200);
    fs::remove_all(home());
    EXPECT_EQ(tool->finish(), 0);
}

TEST_F(Dashboard, ReadsOnly)
{
    play("holding");
    const auto files = [&] {
        std::map<std::string, std::string> contents;
        for (const auto& entry : fs::recursive_directory_iterator(scratch.path()))
            contents[entry.path()] = entry.is_directory() ? "" : contentOf(entry.path());
        return contents;
    };
    const auto before = files();
    serve();
    get("/");
    get("/api/status");
    run({"help"});
    EXPECT_EQ(files(), before);
}

}  // namespace
