#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "application_item_linux.h"
#include "hardware_model_linux.h"
#include "pasteboard.h"
#include "product.h"
#include "run_later.h"
#include "running_application.h"
#include "system.h"
#include "test_files.h"
#include "trash.h"
#include "user_folder.h"

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
    const fs::path data = scratch.makeFolder("home/data");

    std::optional<std::string> errorOf(const fs::path& item) const
    {
        std::optional<std::string> outcome;
        makeTrash(data)(item, [&](const std::string& error) { outcome = error; });
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

TEST_F(TrashTest, ALinkIsMovedItselfAlsoFromAnotherDisk)
{
    const fs::path target = scratch.write("program", "content");
    std::vector<fs::path> folders{scratch.makeFolder("links")};
    const QTemporaryDir otherDisk(QStringLiteral("/dev/shm/trash-test-XXXXXX"));
    if (otherDisk.isValid() && isAnotherDisk(otherDisk.path().toStdString()))
        folders.emplace_back(otherDisk.path().toStdString());
    for (const fs::path& folder : folders) {
        for (const auto& [name, leadsTo] :
             std::map<std::string, fs::path>{{"to a file", target}, {"to nothing", "gone"}, {"to a folder", data}}) {
            fs::create_symlink(leadsTo, folder / name);
            EXPECT_EQ(errorOf(folder / name), "") << folder / name;
            EXPECT_FALSE(fs::is_symlink(folder / name)) << folder / name;
            EXPECT_EQ(fs::read_symlink(trash / "files" / name), leadsTo) << folder / name;
            fs::remove(trash / "files" / name);
            fs::remove(trash / "info" / (name + ".trashinfo"));
        }
    }
    EXPECT_EQ(testing::contentOf(target), "content");
    if (folders.size() == 1)
        GTEST_SKIP() << "there is no other disk";
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
    const fs::path program = scratch.write("quenchly-menubar", "program");
    const System system = makeSystem(scratch.makeFolder("other"));
    EXPECT_TRUE(system.launchctl.empty());
    scratch.write("other/bin/quenchly-menubar", "program");
    for (const fs::path& item :
         {program, scratch / "other/../quenchly-menubar", scratch / "other", scratch / "other/bin/..",
          scratch.makeLink("link", scratch / "other/bin/quenchly-menubar")}) {
        std::string error;
        system.moveToTrash(item, [&](const std::string& text) { error = text; });
        EXPECT_EQ(error, "The program does not belong to this home folder.") << item;
    }
    EXPECT_TRUE(fs::exists(program));
    EXPECT_TRUE(fs::exists(scratch / "other/bin"));
    EXPECT_TRUE(fs::is_symlink(scratch / "link"));
}

const std::vector<const char*> foldersOfTheUser{"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME",
                                                "XDG_CACHE_HOME",  "QUENCHLY_HOME", "QUENCHKY_HOME"};

/// The environment that children get from a system on the home folder `home`, while each variable names `value`.
std::map<std::string, std::string> environmentOn(const fs::path& home, const fs::path& value)
{
    std::vector<std::unique_ptr<Variable>> variables;
    for (const char* name : foldersOfTheUser)
        variables.push_back(std::make_unique<Variable>(name, value));
    return makeSystem(home).environment;
}

TEST(RealSystemTest, OnAnotherHomeFolderChildrenAreToldOfNoFolderElsewhere)
{
    const testing::ScratchFolder scratch;
    const fs::path home = scratch.makeFolder("home");
    for (const fs::path& folder :
         {scratch / "elsewhere", scratch / "home/../elsewhere", scratch / "home/..", scratch / "home",
          scratch / "home2", scratch.makeLink("home/link", scratch / "not there yet"), fs::path("elsewhere")}) {
        const auto environment = environmentOn(home, folder);
        EXPECT_EQ(environment.at("HOME"), home.string());
        for (const char* name : foldersOfTheUser)
            EXPECT_EQ(environment.count(name), 0u) << name << " " << folder;
    }
    for (const fs::path& folder : {scratch / "home/below", scratch.makeLink("link", home) / "below"})
        for (const char* name : foldersOfTheUser)
            EXPECT_EQ(environmentOn(home, folder).at(name), folder.string()) << name;
}

/// Everything below a folder, links not followed.
std::vector<std::string> filesBelow(const fs::path& folder)
{
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        files.push_back(fs::relative(entry.path(), folder));
    std::sort(files.begin(), files.end());
    return files;
}

TEST(RealSystemTest, OnAnotherHomeFolderSettingsAndTrashLieInIt)
{
    const testing::ScratchFolder scratch;
    const fs::path elsewhere = scratch.makeFolder("elsewhere");
    const Variable settings("XDG_CONFIG_HOME", elsewhere);
    const Variable data("XDG_DATA_HOME", elsewhere);
    const System system = makeSystem(scratch.makeFolder("home"));
    EXPECT_EQ(system.loginItem->registerItem(), "");
    system.userDefaults->setBool("key", true);
    system.moveToTrash(scratch.write("home/program", ""), [](const std::string& error) { EXPECT_EQ(error, ""); });
    EXPECT_TRUE(fs::exists(scratch / "home/.config/autostart/quenchly.desktop"));
    EXPECT_TRUE(fs::exists(scratch / "home/.config/quenchly/settings.ini"));
    EXPECT_TRUE(fs::exists(scratch / "home/.local/share/Trash/files/program"));
    EXPECT_EQ(filesBelow(elsewhere), std::vector<std::string>());
}

TEST(RealSystemTest, NoLinkLeadsOutOfAnotherHomeFolder)
{
    for (const char* link : {".config", ".config/autostart", ".config/autostart/quenchly.desktop", ".config/quenchly",
                             ".local", ".local/share/Trash", ".local/share/Trash/files"}) {
        const testing::ScratchFolder scratch;
        scratch.write("elsewhere/autostart/quenchly.desktop", "[Desktop Entry]\nExec=true\n");
        scratch.makeFolder("elsewhere/quenchly");
        scratch.makeFolder("elsewhere/share");
        const bool isFile = std::string(link).ends_with(".desktop");
        scratch.makeLink(fs::path("home") / link,
                         isFile ? scratch / "elsewhere/not there yet" : scratch.path() / "elsewhere");
        const fs::path program = scratch.write("home/program", "");
        const auto before = filesBelow(scratch / "elsewhere");
        const System system = makeSystem(scratch / "home");
        system.loginItem->registerItem();
        system.loginItem->unregisterItem();
        system.loginItem->registerItem();
        system.userDefaults->setBool("key", true);
        system.moveToTrash(program, [](const std::string&) {});
        EXPECT_EQ(filesBelow(scratch / "elsewhere"), before) << link;
        EXPECT_EQ(testing::contentOf(scratch / "elsewhere/autostart/quenchly.desktop"), "[Desktop Entry]\nExec=true\n")
            << link;
    }
}

TEST(UserFolderTest, IsWhereItsVariableSaysUnlessThatIsRelativeOrEverythingIsInTheHomeFolder)
{
    System system;
    system.homeFolder = "/home/ann";
    EXPECT_EQ(dataFolder.in(system), "/home/ann/.local/share");
    EXPECT_EQ(settingsFolder.in(system), "/home/ann/.config");
    for (const char* path : {"", ".", "data", "../data", "~/data"}) {
        system.environment = {{"XDG_DATA_HOME", path}, {"XDG_CONFIG_HOME", path}};
        EXPECT_EQ(dataFolder.in(system), "/home/ann/.local/share") << path;
        EXPECT_EQ(settingsFolder.in(system), "/home/ann/.config") << path;
    }
    system.environment = {{"XDG_DATA_HOME", "/data"}};
    EXPECT_EQ(dataFolder.in(system), "/data");
    EXPECT_EQ(settingsFolder.in(system), "/home/ann/.config");
    system.keepsToHomeFolder = true;
    EXPECT_EQ(dataFolder.in(system), "/home/ann/.local/share");
}

TEST(RealSystemTest, AProgramOnItsOwnHomeFolderCanBeMovedToTheTrash)
{
    const testing::ScratchFolder scratch;
    const fs::path program = scratch.write("other/bin/quenchly-menubar", "program");
    const fs::path link = scratch.makeLink("link to other", scratch / "other");
    const auto errorOf = [](const System& system, const fs::path& item) {
        std::string error = "none yet";
        system.moveToTrash(item, [&](const std::string& text) { error = text; });
        return error;
    };
    EXPECT_EQ(errorOf(makeSystem(link), program), "");
    EXPECT_FALSE(fs::exists(program));
    EXPECT_TRUE(fs::exists(scratch / "other/.local/share/Trash/files/quenchly-menubar"));
    scratch.write("other/bin/quenchly-menubar", "another");
    EXPECT_EQ(errorOf(makeSystem(scratch / "other"), link / "bin/quenchly-menubar"), "");
    EXPECT_FALSE(fs::exists(program));
}

}  // namespace
}  // namespace quenchly
