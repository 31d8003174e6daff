#include "single_instance.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QSignalSpy>
#include <QTest>
#include <atomic>
#include <memory>
#include <thread>

#include "patience.h"
#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using Outcome = SingleInstance::Outcome;

class SingleInstanceTest : public ::testing::Test {
protected:
    SingleInstanceTest()
    {
        fs::permissions(runtime.path(), fs::perms::owner_all);
        qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(runtime.path().string()));
    }
    ~SingleInstanceTest() override
    {
        restore("XDG_RUNTIME_DIR", runtimeBefore);
        restore("TMPDIR", temporaryBefore);
    }

    /// A place for temporary files that everybody may write to, and no runtime folder.
    fs::path shareTemporaryFolder() const
    {
        qunsetenv("XDG_RUNTIME_DIR");
        const fs::path temporary = shared.makeFolder("tmp");
        fs::permissions(temporary, fs::perms::all | fs::perms::sticky_bit);
        qputenv("TMPDIR", QByteArray::fromStdString(temporary.string()));
        return temporary;
    }

    static std::string ownFolder() { return "quenchly-" + std::to_string(geteuid()); }

    static void restore(const char* variable, const QByteArray& value)
    {
        value.isNull() ? qunsetenv(variable) : qputenv(variable, value);
    }

    struct SecondStart {
        Outcome outcome = Outcome::unreachable;
        QStringList tokens;  ///< one for each time that the first was asked to open
    };

    /// A second start while the first handles events. The first has a time to answer in, for which a machine can be too
    /// busy: then it is started again.
    static SecondStart startSecond(SingleInstance& first, const QString& homeFolder, const QString& token = {})
    {
        SecondStart second;
        for (int attempt = 0; attempt < 10; ++attempt) {
            second = {};
            QSignalSpy requests(&first, &SingleInstance::openRequested);
            std::atomic<bool> hasEnded = false;
            std::thread other([&] {
                second.outcome = SingleInstance(homeFolder).claim(token);
                hasEnded = true;
            });
            EXPECT_TRUE(QTest::qWaitFor([&] { return hasEnded.load(); }, testing::patience));
            other.join();
            for (const QVariantList& request : requests)
                second.tokens += request.first().toString();
            if (second.outcome == Outcome::handedOver && requests.count() == 1)
                break;
        }
        return second;
    }

    fs::path socketPath() const
    {
        for (const auto& entry : fs::directory_iterator(runtime.path()))
            if (entry.path().extension() == ".socket")
                return entry.path();
        return {};
    }

    testing::ScratchFolder runtime;
    testing::ScratchFolder shared;
    QByteArray runtimeBefore = qgetenv("XDG_RUNTIME_DIR");
    QByteArray temporaryBefore = qgetenv("TMPDIR");
    QString home = QStringLiteral("/home/someone");
};

TEST_F(SingleInstanceTest, ASecondStartAsksTheFirstToOpen)
{
    SingleInstance first(home);
    ASSERT_EQ(first.claim({}), Outcome::first);
    const SecondStart second = startSecond(first, home, QStringLiteral("token-1"));
    EXPECT_EQ(second.outcome, Outcome::handedOver);
    EXPECT_EQ(second.tokens, QStringList{QStringLiteral("token-1")});
}

TEST_F(SingleInstanceTest, AnotherHomeFolderIsAnotherProgram)
{
    SingleInstance first(home);
    SingleInstance second(QStringLiteral("/home/other"));
    EXPECT_EQ(first.claim({}), Outcome::first);
    EXPECT_EQ(second.claim({}), Outcome::first);
}

TEST_F(SingleInstanceTest, TheSameHomeFolderInOtherWordsIsTheSameProgram)
{
    SingleInstance first(home);
    ASSERT_EQ(first.claim({}), Outcome::first);
    EXPECT_EQ(startSecond(first, home + QStringLiteral("/below/..//")).outcome, Outcome::handedOver);
}

TEST_F(SingleInstanceTest, AFirstThatListensAMomentLaterIsReached)
{
    SingleInstance first(home);
    ASSERT_EQ(first.claim({}), Outcome::first);
    const fs::path socket = socketPath();
    Outcome second = Outcome::unreachable;
    // The second waits for a time, within which a busy machine may not bring the socket back.
    for (int attempt = 0; attempt < 10 && second != Outcome::handedOver; ++attempt) {
        fs::rename(socket, runtime / "later");
        std::atomic<bool> hasEnded = false;
        std::thread other([&] {
            second = SingleInstance(home).claim({});
            hasEnded = true;
        });
        QTest::qWait(100);
        fs::rename(runtime / "later", socket);
        EXPECT_TRUE(QTest::qWaitFor([&] { return hasEnded.load(); }, testing::patience));
        other.join();
    }
    EXPECT_EQ(second, Outcome::handedOver);
}

TEST_F(SingleInstanceTest, WhereNothingCanBeWrittenEachStartRunsAndSaysWhy)
{
    const QString readOnly =
        fs::exists("/proc") ? QStringLiteral("/proc") : QStringLiteral("/System");  // even for root
    qputenv("XDG_RUNTIME_DIR", readOnly.toUtf8());
    qputenv("TMPDIR", readOnly.toUtf8());
    SingleInstance alone(home);
    EXPECT_EQ(alone.claim({}), Outcome::deaf);
    EXPECT_TRUE(alone.problem().startsWith(readOnly + QStringLiteral("/quenchly-"))) << alone.problem().toStdString();
}

TEST_F(SingleInstanceTest, WithoutARuntimeFolderItMakesAPrivateOne)
{
    const fs::path temporary = shareTemporaryFolder();
    SingleInstance first(home);
    EXPECT_EQ(first.claim({}), Outcome::first);
    EXPECT_EQ(fs::symlink_status(temporary / ownFolder()).permissions(), fs::perms::owner_all);
    EXPECT_EQ(startSecond(first, home).outcome, Outcome::handedOver);
}

TEST_F(SingleInstanceTest, ARuntimeFolderThatOthersMayEnterIsNotUsed)
{
    const fs::path temporary = shareTemporaryFolder();
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(runtime.path().string()));
    fs::permissions(runtime.path(), fs::perms(0755));
    SingleInstance first(home);
    EXPECT_EQ(first.claim({}), Outcome::first);
    EXPECT_TRUE(fs::is_empty(runtime.path()));
    EXPECT_FALSE(fs::is_empty(temporary / ownFolder()));
}

TEST_F(SingleInstanceTest, ALinkInPlaceOfItsFolderIsRefused)
{
    const fs::path temporary = shareTemporaryFolder();
    fs::create_symlink(runtime.path(), temporary / ownFolder());
    SingleInstance alone(home);
    EXPECT_EQ(alone.claim({}), Outcome::deaf);
    EXPECT_TRUE(alone.problem().startsWith(QString::fromStdString(temporary / ownFolder())));
    EXPECT_TRUE(fs::is_empty(runtime.path()));
}

/// What another user can prepare: a lock that a living process holds, and a socket that answers.
class StrangerAtTheDoor {
public:
    explicit StrangerAtTheDoor(const fs::path& stem) : lock_(QString::fromStdString(stem.string() + ".lock"))
    {
        lock_.setStaleLockTime(0);
        EXPECT_TRUE(lock_.tryLock(0));
        EXPECT_TRUE(server_.listen(QString::fromStdString(stem.string() + ".socket")));
        QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] {
            QLocalSocket* socket = server_.nextPendingConnection();
            QObject::connect(socket, &QLocalSocket::readyRead, socket, [this, socket] {
                heard += socket->readAll();
                socket->write("ok\n");
            });
        });
    }

    QByteArray heard;

private:
    QLockFile lock_;
    QLocalServer server_;
};

class StrangersTest : public SingleInstanceTest {
protected:
    void SetUp() override
    {
        if (!testing::anotherUser())
            GTEST_SKIP() << "only root can act as another user";
    }

    /// The outcome of a start while others' events are handled.
    static Outcome claimElsewhere(SingleInstance& instance)
    {
        Outcome outcome = Outcome::first;
        std::atomic<bool> hasEnded = false;
        std::thread other([&] {
            outcome = instance.claim(QStringLiteral("secret"));
            hasEnded = true;
        });
        EXPECT_TRUE(QTest::qWaitFor([&] { return hasEnded.load(); }, testing::patience));
        other.join();
        return outcome;
    }

    /// The name of the files, learned from a start of this user's own.
    fs::path stem() const
    {
        SingleInstance own(home);
        EXPECT_EQ(own.claim({}), Outcome::first);
        return socketPath().stem();
    }
};

TEST_F(StrangersTest, AnAnswerFromAStrangersFolderIsNotBelieved)
{
    const fs::path name = stem();
    const fs::path temporary = shareTemporaryFolder();
    std::unique_ptr<StrangerAtTheDoor> stranger;
    {
        const testing::OrdinaryUser user;
        fs::create_directory(temporary / "quenchly-0");
        stranger = std::make_unique<StrangerAtTheDoor>(temporary / "quenchly-0" / name);
    }
    SingleInstance instance(home);
    EXPECT_EQ(claimElsewhere(instance), Outcome::deaf);
    EXPECT_EQ(instance.problem(),
              QString::fromStdString((temporary / "quenchly-0").string() + " is not a folder of this user's alone"));
    EXPECT_EQ(stranger->heard, "");
}

TEST_F(StrangersTest, AStrangersProgramIsNotBelievedEvenInOnesOwnFolder)
{
    const fs::path name = stem();
    const fs::path elsewhere = shareTemporaryFolder();
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(runtime.path().string()));
    std::unique_ptr<StrangerAtTheDoor> stranger;
    {
        const testing::OrdinaryUser user;
        stranger = std::make_unique<StrangerAtTheDoor>(elsewhere / name);
    }
    for (const char* ending : {".lock", ".socket"})
        fs::rename(elsewhere / (name.string() + ending), runtime / (name.string() + ending));
    SingleInstance instance(home);
    EXPECT_EQ(claimElsewhere(instance), Outcome::deaf);
    EXPECT_TRUE(instance.problem().startsWith(QStringLiteral("another user's program listens on ")))
        << instance.problem().toStdString();
    EXPECT_EQ(stranger->heard, "");
}

TEST_F(StrangersTest, AStrangersRequestOpensNothing)
{
    SingleInstance first(home);
    ASSERT_EQ(first.claim({}), Outcome::first);
    fs::permissions(runtime.path(), fs::perms::all);
    fs::permissions(socketPath(), fs::perms::all);
    QSignalSpy requests(&first, &SingleInstance::openRequested);
    QLocalSocket stranger;
    {
        const testing::OrdinaryUser user;
        stranger.connectToServer(QString::fromStdString(socketPath().string()));
        ASSERT_TRUE(stranger.waitForConnected(testing::patience));
    }
    stranger.write("token\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return stranger.state() == QLocalSocket::UnconnectedState; }, testing::patience));
    EXPECT_EQ(stranger.readAll(), "");
    EXPECT_EQ(requests.count(), 0);
}

TEST_F(SingleInstanceTest, WhereNoSocketCanBeMadeItRunsAndSaysWhy)
{
    fs::path socket;
    {
        SingleInstance first(home);  // only to learn the name
        ASSERT_EQ(first.claim({}), Outcome::first);
        socket = socketPath();
    }
    fs::create_directory(socket);
    SingleInstance alone(home);
    EXPECT_EQ(alone.claim({}), Outcome::deaf);
    EXPECT_TRUE(alone.problem().startsWith(QStringLiteral("cannot listen on ") + QString::fromStdString(socket)))
        << alone.problem().toStdString();
}

TEST_F(SingleInstanceTest, ARuntimeFolderWithATooLongNameIsReplacedByTheTemporaryOne)
{
    const fs::path temporary = runtime.makeFolder("t");
    const fs::path longNamed = runtime.makeFolder(std::string(100, 'x'));
    fs::permissions(longNamed, fs::perms::owner_all);
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(longNamed.string()));
    qputenv("TMPDIR", QByteArray::fromStdString(temporary.string()));
    SingleInstance first(home);
    EXPECT_EQ(first.claim({}), Outcome::first);
    EXPECT_TRUE(fs::is_empty(longNamed));
    EXPECT_FALSE(fs::is_empty(temporary));
    EXPECT_EQ(startSecond(first, home).outcome, Outcome::handedOver);
}

TEST_F(SingleInstanceTest, WhereEveryNameIsTooLongItIsStillReached)
{
    const fs::path longNamed = runtime.makeFolder(std::string(100, 'x'));
    fs::permissions(longNamed, fs::perms::owner_all);
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(longNamed.string()));
    qputenv("TMPDIR", QByteArray::fromStdString(longNamed.string()));
    home = QString::fromStdString(runtime.path());  // nobody else's, as the files go into /tmp
    const fs::path last = fs::path("/tmp") / ownFolder();
    const bool wasThere = fs::exists(last);
    {
        SingleInstance first(home);
        EXPECT_EQ(first.claim({}), Outcome::first);
        EXPECT_TRUE(fs::is_empty(longNamed));
        EXPECT_EQ(startSecond(first, home).outcome, Outcome::handedOver);
    }
    std::error_code inUse;
    if (!wasThere)
        fs::remove(last, inUse);
}

TEST_F(SingleInstanceTest, ItLeavesNothingBehind)
{
    {
        SingleInstance first(home);
        ASSERT_EQ(first.claim({}), Outcome::first);
        EXPECT_FALSE(fs::is_empty(runtime.path()));
    }
    EXPECT_TRUE(fs::is_empty(runtime.path()));
}

TEST_F(SingleInstanceTest, WhatACrashedProgramLeftBehindIsTakenOver)
{
    const pid_t crashing = fork();
    if (crashing == 0) {
        SingleInstance first(home);
        _exit(first.claim({}) == Outcome::first ? 0 : 1);  // without a destructor
    }
    int status = 0;
    ASSERT_EQ(waitpid(crashing, &status, 0), crashing);
    ASSERT_EQ(status, 0);
    EXPECT_FALSE(fs::is_empty(runtime.path()));
    EXPECT_EQ(SingleInstance(home).claim({}), Outcome::first);
}

TEST_F(SingleInstanceTest, AFirstThatDoesNotListenIsReported)
{
    SingleInstance first(home);
    ASSERT_EQ(first.claim({}), Outcome::first);
    ASSERT_TRUE(fs::remove(socketPath()));
    EXPECT_EQ(SingleInstance(home).claim({}), Outcome::unreachable);
}

TEST_F(SingleInstanceTest, NoiseOnTheSocketOpensNothing)
{
    SingleInstance first(home);
    ASSERT_EQ(first.claim({}), Outcome::first);
    QSignalSpy requests(&first, &SingleInstance::openRequested);
    QLocalSocket noisy;
    noisy.connectToServer(QString::fromStdString(socketPath().string()));
    ASSERT_TRUE(noisy.waitForConnected(testing::patience));
    noisy.write(QByteArray(5'000'000, 'x'));
    ASSERT_TRUE(QTest::qWaitFor([&] { return noisy.bytesToWrite() == 0; }, testing::patience));
    noisy.disconnectFromServer();
    EXPECT_EQ(startSecond(first, home, QStringLiteral("token-1")).outcome, Outcome::handedOver);
    for (const QVariantList& request : requests)
        EXPECT_EQ(request.first().toString(), QStringLiteral("token-1"));
}

}  // namespace
}  // namespace quenchly
