#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <chrono>
#include <optional>
#include <thread>

#include "application_item_linux.h"
#include "hardware_model_linux.h"
#include "pasteboard.h"
#include "product.h"
#include "run_later.h"
#include "running_application.h"
#include "system.h"
#include "test_files.h"
#include "trash.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// Sets a variable of this process for as long as it lives.
class Variable {
public:
    Variable(const char* name, const std::string& value)
        : name_(name), before_(qgetenv(name)), was_(qEnvironmentVariableIsSet(name))
    {
        qputenv(name, QByteArray::fromStdString(value));
    }
    ~Variable()
    {
        if (was_)
            qputenv(name_, before_);
        else
            qunsetenv(name_);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name_;
    QByteArray before_;
    bool was_;
};

TEST(PasteboardTest, ReplacesWhatWasCopiedByPlainText)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    copyToPasteboard("To: a@b\n\n<b>β</b>");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("To: a@b\n\n<b>β</b>"));
}

TEST(RunLaterTest, RunsTheTaskFromTheEventLoop)
{
    bool ran = false;
    runLater(0ms, [&] {
        ran = true;
        QCoreApplication::exit(7);
    });
    EXPECT_FALSE(ran);
    EXPECT_EQ(QCoreApplication::exec(), 7);
    EXPECT_TRUE(ran);
}

TEST(RunningApplicationTest, AnyThreadCanEndTheProgram)
{
    const auto application = makeRunningApplication();
    std::thread other([&] { application->terminate(); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    other.join();
}

class TrashTest : public ::testing::Test {
protected:
    testing::ScratchFolder scratch;
    Variable home{"HOME", scratch.makeFolder("home")};
    Variable data{"XDG_DATA_HOME", scratch.makeFolder("home/data")};

    static std::optional<std::string> errorOf(const fs::path& item)
    {
        std::optional<std::string> outcome;
        moveToTrash(item, [&](const std::string& error) { outcome = error; });
        return outcome;
    }

    const fs::path trash = scratch / "home/data/Trash";

    /// The lines of the note from which a file manager puts an item back.
    QStringList noteOn(const fs::path& item) const
    {
        QFile note(QString::fromStdString((trash / "info" / item.filename()).string() + ".trashinfo"));
        EXPECT_TRUE(note.open(QIODevice::ReadOnly));
        return QString::fromUtf8(note.readAll()).trimmed().split(u'\n');
    }

    bool isAnotherDisk(const fs::path& folder) const
    {
        const QStorageInfo disk(QString::fromStdString(folder.string()));
        return disk.isValid() && disk.rootPath() != QStorageInfo(QString::fromStdString(scratch.path())).rootPath();
    }

    static QString valueOf(const QString& line, const QString& key)
    {
        EXPECT_TRUE(line.startsWith(key)) << line.toStdString();
        return line.mid(key.size());
    }
};

TEST_F(TrashTest, AFileCanBeFoundAndPutBackWhereverItWas)
{
    const QDateTime before = QDateTime::fromSecsSinceEpoch(QDateTime::currentSecsSinceEpoch());
    for (const char* name : {"Programs/Quenchly 2.AppImage", "Prög%20räms/100% 'of' it/日本.AppImage", "a\nb/c"}) {
        const fs::path image = scratch.write(name, "image");
        EXPECT_EQ(errorOf(image), "");
        EXPECT_FALSE(fs::exists(image));
        EXPECT_TRUE(fs::exists(trash / "files" / image.filename()));
        const QStringList note = noteOn(image);
        ASSERT_EQ(note.size(), 3) << name;
        EXPECT_EQ(note.at(0), QStringLiteral("[Trash Info]"));
        const QString path = valueOf(note.at(1), QStringLiteral("Path="));
        EXPECT_EQ(QByteArray::fromPercentEncoding(path.toLatin1()).toStdString(), image.string());
        EXPECT_TRUE(QRegularExpression(QStringLiteral("^[/A-Za-z0-9._~%-]+$")).match(path).hasMatch())
            << path.toStdString();
        const QString date = valueOf(note.at(2), QStringLiteral("DeletionDate="));
        EXPECT_GE(QDateTime::fromString(date, Qt::ISODate), before);
        EXPECT_LE(QDateTime::fromString(date, Qt::ISODate), QDateTime::currentDateTime());
        EXPECT_EQ(date.size(), 19) << date.toStdString();
    }
}

TEST_F(TrashTest, TheTrashIsMadeForItsOwnerAlone)
{
    fs::remove(scratch / "home/data");
    EXPECT_EQ(errorOf(scratch.write("image", "image")), "");
    EXPECT_EQ(fs::status(trash).permissions(), fs::perms(0700));
    EXPECT_TRUE(fs::exists(trash / "files/image"));
}

TEST_F(TrashTest, WhatIsInTheTrashAlreadyIsNeverReplaced)
{
    for (const char* content : {"first", "second"})
        EXPECT_EQ(errorOf(scratch.write("image", content)), "");
    fs::remove(trash / "info/image.2.trashinfo");
    EXPECT_EQ(errorOf(scratch.write("image", "third")), "");
    EXPECT_EQ(testing::contentOf(trash / "files/image"), "first");
    EXPECT_EQ(testing::contentOf(trash / "files/image.2"), "second");
    EXPECT_EQ(testing::contentOf(trash / "files/image.3"), "third");
    EXPECT_EQ(noteOn("image.3").value(1), noteOn("image").value(1));
}

TEST_F(TrashTest, AFileOfAnotherDiskIsTakenOverWhole)
{
    const fs::path otherDisk = "/dev/shm";
    if (!isAnotherDisk(otherDisk))
        GTEST_SKIP() << "there is no other disk";
    const QTemporaryDir folder(QString::fromStdString((otherDisk / "trash-test-XXXXXX").string()));
    const fs::path image = fs::path(folder.path().toStdString()) / "image";
    fs::copy_file(scratch.write("image", "content"), image);
    fs::permissions(image, fs::perms(0755));
    EXPECT_EQ(errorOf(image), "");
    EXPECT_FALSE(fs::exists(image));
    EXPECT_EQ(testing::contentOf(trash / "files/image"), "content");
    EXPECT_EQ(fs::status(trash / "files/image").permissions(), fs::perms(0755));
    EXPECT_EQ(noteOn("image").value(1).toStdString(), "Path=" + image.string());
}

TEST_F(TrashTest, WithoutATrashNothingIsMovedAnywhere)
{
    const fs::path image = scratch.write("image", "image");
    for (const char* inTheWay : {"home/data/Trash/files", "home/data/Trash/info", "home/data/Trash", "home/data"}) {
        fs::remove_all(scratch / inTheWay);
        scratch.write(inTheWay, "a file");
        EXPECT_NE(errorOf(image).value_or(""), "") << inTheWay;
        EXPECT_TRUE(fs::exists(image)) << inTheWay;
        fs::remove_all(scratch / inTheWay);
    }
    EXPECT_FALSE(fs::exists("files"));
    EXPECT_FALSE(fs::exists("info"));
}

TEST_F(TrashTest, WhatMayNotBeMovedStaysAndTheReasonIsTold)
{
    const fs::path program = scratch.write("usr/bin/quenchly-menubar", "program");
    fs::permissions(scratch / "usr/bin", fs::perms(0555));
    fs::permissions(scratch / "home/data", fs::perms(0777));
    std::optional<std::string> error;
    {
        const testing::OrdinaryUser user;
        if (!user.inForce())
            GTEST_SKIP() << "permissions do not hold here";
        error = errorOf(program);
    }
    fs::permissions(scratch / "usr/bin", fs::perms(0755));
    ASSERT_TRUE(error.has_value());
    EXPECT_NE(*error, "");
    EXPECT_TRUE(fs::exists(program));
    EXPECT_TRUE(fs::is_empty(trash / "files"));
    EXPECT_TRUE(fs::is_empty(trash / "info"));
}

TEST_F(TrashTest, WhatIsNotThereIsAFailure)
{
    EXPECT_NE(errorOf(scratch / "nothing").value_or(""), "");
}

TEST(ApplicationItemTest, IsTheExecutable)
{
    EXPECT_EQ(applicationItem("/usr/bin/quenchly-menubar", {}), "/usr/bin/quenchly-menubar");
}

TEST(ApplicationItemTest, IsTheAppImageThatTheExecutableComesFrom)
{
    const fs::path executable = "/tmp/.mount_QuencXyz/usr/bin/quenchly-menubar";
    EXPECT_EQ(
        applicationItem(executable, {{"APPIMAGE", "/home/u/Quenchly.AppImage"}, {"APPDIR", "/tmp/.mount_QuencXyz"}}),
        "/home/u/Quenchly.AppImage");
    EXPECT_EQ(
        applicationItem(executable, {{"APPIMAGE", "/home/u/Quenchly.AppImage"}, {"APPDIR", "/tmp/.mount_QuencXyz/"}}),
        "/home/u/Quenchly.AppImage");
}

TEST(ApplicationItemTest, IsNeverAnAppImageThatOnlyStartedUs)
{
    const fs::path executable = "/usr/bin/quenchly-menubar";
    const std::map<std::string, std::string> inherited[] = {
        {{"APPIMAGE", "/home/u/Terminal.AppImage"}, {"APPDIR", "/tmp/.mount_Termin"}},
        {{"APPIMAGE", "/home/u/Terminal.AppImage"}, {"APPDIR", "/usr/b"}},
        {{"APPIMAGE", "/home/u/Terminal.AppImage"}, {"APPDIR", ""}},
        {{"APPIMAGE", "/home/u/Terminal.AppImage"}, {"APPDIR", "."}},
        {{"APPIMAGE", "/home/u/Terminal.AppImage"}},
        {{"APPIMAGE", "Terminal.AppImage"}, {"APPDIR", "/usr"}},
        {{"APPIMAGE", ""}, {"APPDIR", "/usr"}},
    };
    for (const auto& environment : inherited)
        EXPECT_EQ(applicationItem(executable, environment), executable);
}

class HardwareModelTest : public ::testing::Test {
protected:
    testing::ScratchFolder sys;

    std::optional<std::string> model() const { return hardwareModel(sys.path()); }
};

TEST_F(HardwareModelTest, IsTheProductNameOfTheFirmware)
{
    sys.write("class/dmi/id/product_name", "20XWCTO1WW\n");
    sys.write("firmware/devicetree/base/model", "another");
    EXPECT_EQ(model(), "20XWCTO1WW");
}

TEST_F(HardwareModelTest, IsTheModelOfTheDeviceTreeWhereNoFirmwareTells)
{
    sys.write("class/dmi/id/product_name", "\n");
    sys.write("firmware/devicetree/base/model", std::string("Raspberry Pi 5 Model B Rev 1.0\0", 31));
    EXPECT_EQ(model(), "Raspberry Pi 5 Model B Rev 1.0");
}

TEST_F(HardwareModelTest, IsOneShortLineWhateverTheFirmwareSays)
{
    sys.write("class/dmi/id/product_name", "  To be\tfilled\x01\nby \xff " + std::string(1000, 'x'));
    const std::string text = model().value_or("");
    EXPECT_EQ(text.find("To be filled by \xef\xbf\xbd xxx"), 0u) << text;
    EXPECT_LT(text.size(), 120u);
}

TEST_F(HardwareModelTest, IsNoneWhereNothingTells)
{
    EXPECT_EQ(model(), std::nullopt);
}

TEST(RealSystemTest, TellsItsVersionAndItsExecutableAndIsNotConfiguredForUpdates)
{
    const System system = makeSystem();
    EXPECT_EQ(system.bundleInfo, (std::map<std::string, std::string>{{"CFBundleShortVersionString", version}}));
    EXPECT_EQ(system.applicationItem, fs::read_symlink("/proc/self/exe"));
    EXPECT_EQ(system.launchctl, "/bin/launchctl");
    EXPECT_EQ(system.startUpdaterBackend(), nullptr);
    EXPECT_EQ(system.sysctlString("hw.model"), hardwareModel("/sys"));
    EXPECT_EQ(system.sysctlString("hw.other"), std::nullopt);
}

TEST(RealSystemTest, NodeIsTheSystemsOwnOrAnyOnTheSearchPathThatIsNamedInFull)
{
    const Variable path("PATH", "/opt/node/bin::bin:.:/home/someone/bin");
    const std::vector<fs::path> expected{"/usr/bin/node", "/opt/node/bin/node", "/home/someone/bin/node"};
    EXPECT_EQ(makeSystem().nodeRuntimes, expected);
}

TEST(RealSystemTest, OnAnotherHomeFolderLaunchdAndTheProgramAreLeftAlone)
{
    const testing::ScratchFolder scratch;
    const Variable home("HOME", scratch.makeFolder("home"));
    const Variable data("XDG_DATA_HOME", scratch.makeFolder("home/data"));
    const fs::path program = scratch.write("quenchly-menubar", "program");
    const System system = makeSystem(scratch.makeFolder("other"));
    EXPECT_TRUE(system.launchctl.empty());
    EXPECT_EQ(system.environment.at("HOME"), (scratch / "other").string());
    for (const fs::path& item : {program, scratch / "other/../quenchly-menubar", scratch / "other"}) {
        std::string error;
        system.moveToTrash(item, [&](const std::string& text) { error = text; });
        EXPECT_EQ(error, "The program does not belong to this home folder.") << item;
    }
    EXPECT_TRUE(fs::exists(program));
    EXPECT_TRUE(fs::exists(scratch / "other"));
}

TEST(RealSystemTest, AProgramOnItsOwnHomeFolderCanBeMovedToTheTrash)
{
    const testing::ScratchFolder scratch;
    const Variable home("HOME", scratch.makeFolder("home"));
    const Variable data("XDG_DATA_HOME", scratch.makeFolder("home/data"));
    const fs::path program = scratch.write("other/bin/quenchly-menubar", "program");
    const fs::path link = scratch.makeLink("link to other", scratch / "other");
    const auto errorOf = [](const System& system, const fs::path& item) {
        std::string error = "none yet";
        system.moveToTrash(item, [&](const std::string& text) { error = text; });
        return error;
    };
    EXPECT_EQ(errorOf(makeSystem(link), program), "");
    EXPECT_FALSE(fs::exists(program));
    EXPECT_TRUE(fs::exists(scratch / "home/data/Trash/files/quenchly-menubar"));
    scratch.write("other/bin/quenchly-menubar", "another");
    EXPECT_EQ(errorOf(makeSystem(scratch / "other"), link / "bin/quenchly-menubar"), "");
    EXPECT_FALSE(fs::exists(program));
}

}  // namespace
}  // namespace quenchly
