#include "support_contact.h"

#include <QString>
#include <QUrl>

#include "foreground.h"
#include "l10n.h"
#include "product.h"

namespace quenchly::SupportContact {
namespace {

constexpr std::size_t supportForm = 1;
constexpr std::size_t mailProgram = 2;

/// As the value of a query item: what a query may hold stays as it is, but for what ends an item.
std::string percentEncoded(const QString& value)
{
    return QUrl::toPercentEncoding(value, "!$'()*+,;:@/?").toStdString();
}

std::string percentEncoded(const std::string& value)
{
    return percentEncoded(QString::fromStdString(value));
}

}  // namespace

Draft reportDraft(const Facts& facts)
{
    Draft draft{.subject = "Quenchly " + facts.version + " problem",
                .body = "Version: " + facts.version + "\nMac: " + facts.macModel + "\n\nWhat went wrong:\n",
                .clipboard = {}};
    draft.clipboard =
        std::string("To: ") + Product::supportAddress + "\nSubject: " + draft.subject + "\n\n" + draft.body;
    return draft;
}

std::string supportPageURL(const std::string& version)
{
    const std::string page = std::string("https://") + Product::vendorHost + "/quenchly/support.html";
    const QString known = QString::fromStdString(version).trimmed();
    return known.isEmpty() || known == QStringLiteral("?") ? page : page + "?v=" + percentEncoded(known);
}

void openMailto(const System& system, const Mail& mail)
{
    system.openAddress(std::string("mailto:") + Product::supportAddress + "?subject=" + percentEncoded(mail.subject) +
                       "&body=" + percentEncoded(mail.body));
}

void presentReportProblem(const System& system, const Facts& facts)
{
    const Draft draft = reportDraft(facts);
    system.copyToPasteboard(draft.clipboard);
    comeToForeground(system);
    const auto answer =
        system.runAlert({.title = L10n::t("support_email_copied"),
                         .text = L10n::tf("support_email_copied_text", {std::string(Product::supportAddress)}),
                         .buttons = {L10n::t("ok"), L10n::t("open_support_form"), L10n::t("try_mail")}});
    if (answer == supportForm)
        system.openAddress(supportPageURL(facts.version));
    else if (answer == mailProgram)
        openMailto(system, {.subject = draft.subject, .body = draft.body});
    returnToMenuBar(system);
}

}  // namespace quenchly::SupportContact
