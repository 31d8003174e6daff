#include "single_instance.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QLocalSocket>
#include <QSignalSpy>
#include <QTest>
#include <atomic>
#include <thread>

#include "patience.h"
#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using Outcome = SingleInstance::Outcome;

class SingleInstanceTest : public ::testing::Test {
protected:
    SingleInstanceTest() { qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(runtime.path().string())); }
    ~SingleInstanceTest() override
    {
        restore("XDG_RUNTIME_DIR", runtimeBefore);
        restore("TMPDIR", temporaryBefore);
    }

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
    SingleInstance alone(home);
    EXPECT_EQ(alone.claim({}), Outcome::deaf);
    EXPECT_TRUE(alone.problem().startsWith(QStringLiteral("cannot write %1/quenchly-menubar-").arg(readOnly)))
        << alone.problem().toStdString();
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
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(longNamed.string()));
    qputenv("TMPDIR", QByteArray::fromStdString(longNamed.string()));
    home = QString::fromStdString(runtime.path());  // nobody else's, as the files go into /tmp
    SingleInstance first(home);
    EXPECT_EQ(first.claim({}), Outcome::first);
    EXPECT_TRUE(fs::is_empty(longNamed));
    EXPECT_EQ(startSecond(first, home).outcome, Outcome::handedOver);
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
