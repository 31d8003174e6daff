#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QUrl>

#include "application_on_desktop.h"
#include "desktop.h"
#include "product.h"

namespace quenchly {
namespace {

using namespace testing;

const QString number = QString::fromLatin1(version);
const QString host = QString::fromLatin1(Product::vendorHost);
const QString address = QString::fromLatin1(Product::supportAddress);

const ShownAlert copied{
    .title = QStringLiteral("Support email copied"),
    .text = QStringLiteral("A draft for %1 is on your clipboard. Paste into webmail, or open the "
                           "support form and send from the browser.")
                .arg(address),
    .buttons = {QStringLiteral("OK"), QStringLiteral("Open support form"), QStringLiteral("Try Mail")},
    .pressedByReturn = QStringLiteral("OK")};

const ShownAlert notConfigured{
    .title = QStringLiteral("Updates not configured yet"),
    .text = QStringLiteral("Checking will work once updates are published on %1. Until then, new versions come from "
                           "https://%1/quenchly/.\n\nIf Quenchly came as a package, the package manager updates it.")
                .arg(host),
    .buttons = {QStringLiteral("OK")},
    .pressedByReturn = QStringLiteral("OK")};

/// Text that another program reads; the test is one.
QString clipboard()
{
    return QGuiApplication::clipboard()->text();
}

class ReportTest : public ApplicationOnDesktop {
protected:
    void SetUp() override
    {
        ApplicationOnDesktop::SetUp();
        showScenario("holding");
    }

    void openReport()
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("copied before"));
        openPanel();
        chooseRow(QStringLiteral("Report a problem"));
        expectAlert(copied);
    }

    /// The draft without the machine's model, which is any text.
    static QString draftFor(const QString& model)
    {
        return QStringLiteral("To: %1\nSubject: Quenchly %2 problem\n\nVersion: %2\nMac: %3\n\nWhat went wrong:\n")
            .arg(address, number, model);
    }

    /// A look at the clipboard finds nothing while its owner is busy.
    static QString copiedDraft()
    {
        QString draft;
        EXPECT_TRUE(waitFor([&] { return !(draft = clipboard()).isEmpty(); }));
        return draft;
    }

    static QString modelIn(const QString& draft)
    {
        return draft.section(QStringLiteral("\nMac: "), 1).section(u'\n', 0, 0);
    }

    static void expectDraft()
    {
        const QString draft = copiedDraft();
        EXPECT_FALSE(modelIn(draft).isEmpty());
        EXPECT_EQ(draft, draftFor(modelIn(draft)));
    }
};

TEST_F(ReportTest, TheDraftIsOnTheClipboardBeforeAnAnswerAndStaysThere)
{
    for (const char* key : {"Return", "Escape", "alt+F4"}) {
        openReport();
        expectDraft();
        keepPicture(QStringLiteral("report"));
        press(key);
        expectNoWindows();
        expectDraft();
    }
    EXPECT_EQ(openedAddresses(), QStringList());
    EXPECT_EQ(toolRuns(), QStringList());
}

TEST_F(ReportTest, TheSupportFormIsToldTheVersion)
{
    openReport();
    press("Tab");
    press("space");
    expectNoWindows();
    EXPECT_TRUE(waitFor([this] { return !openedAddresses().isEmpty(); }));
    EXPECT_EQ(openedAddresses(),
              QStringList{QStringLiteral("https://%1/quenchly/support.html?v=%2").arg(host, number)});
    expectDraft();
}

TEST_F(ReportTest, TheMailProgramIsGivenTheDraft)
{
    openReport();
    press("Tab");
    press("Tab");
    press("Return");
    expectNoWindows();
    EXPECT_TRUE(waitFor([this] { return !openedAddresses().isEmpty(); }));
    const QByteArray model = QUrl::toPercentEncoding(modelIn(copiedDraft()), "!$'()*+,;:@/?");
    EXPECT_EQ(openedAddresses().join(u'\n').toStdString(), std::string("mailto:") + Product::supportAddress +
                                                               "?subject=Quenchly%20" + version +
                                                               "%20problem&body=Version:%20" + version + "%0AMac:%20" +
                                                               model.toStdString() + "%0A%0AWhat%20went%20wrong:%0A");
}

class UpdateAlertTest : public ApplicationOnDesktop {};

TEST_F(UpdateAlertTest, UpdatesThatAreNotConfiguredAreLoggedOnceShownInThePanelAndExplained)
{
    const QStringList line{
        QStringLiteral("Quenchly: Sparkle not configured (missing/placeholder SUFeedURL or SUPublicEDKey); updater "
                       "not started.")};
    playScenario("calm");
    startApplication(logCaught());
    for (const char* key : {"Return", "Escape"}) {
        openPanel();
        EXPECT_TRUE(waitFor([&] { return logLines() == line; }));
        EXPECT_TRUE(shows(QStringLiteral("Updates not configured yet")));
        chooseRow(QStringLiteral("Check for Updates..."));
        expectAlert(notConfigured);
        keepPicture(QStringLiteral("updates"));
        press(key);
        expectNoWindows();
    }
    EXPECT_EQ(logLines(), line);
}

TEST_F(UpdateAlertTest, ThePanelStaysClosedUntilTheAlertIsAnswered)
{
    showScenario("calm");
    openPanel();
    chooseRow(QStringLiteral("Check for Updates..."));
    expectAlert(notConfigured);
    click(restingIcon().center());
    EXPECT_TRUE(screenRests());
    EXPECT_TRUE(panel().isEmpty());
    expectAlert(notConfigured);
    press("Return");
    expectNoWindows();
    openPanel();
}

}  // namespace
}  // namespace quenchly
