#include "updater.h"

#include <QByteArray>
#include <QUrl>
#include <chrono>
#include <utility>

#include "foreground.h"
#include "l10n.h"
#include "product.h"

namespace quenchly {
namespace {

/// By then the framework's window has come to the front.
constexpr std::chrono::milliseconds foregroundTime{2000};
constexpr qsizetype keyBytes = 32;
constexpr qsizetype keyBase64Length = 44;

QString infoText(const BundleInfo& info, const char* key)
{
    return QString::fromStdString(bundleText(info, key).value_or(""));
}

bool isUpdateKey(const QString& text)
{
    const auto key = QByteArray::fromBase64Encoding(text.toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
    // Qt takes a text without its padding too; the framework does not.
    return key && key.decoded.size() == keyBytes && text.size() == keyBase64Length;
}

}  // namespace

Updater::Updater(System system, QObject* parent) : QObject(parent), system_(std::move(system))
{
    if (isSparkleConfigured(system_.bundleInfo))
        start();
    else
        system_.log(
            "Quenchly: Sparkle not configured (missing/placeholder SUFeedURL or SUPublicEDKey); updater not started.");
}

Updater::~Updater() = default;

void Updater::start()
{
    backend_ = system_.startUpdaterBackend();
    if (backend_)
        backend_->setAutomaticallyDownloadsUpdates(false);
    else
        system_.log("Quenchly: Sparkle is configured but could not be loaded; updater not started.");
}

bool Updater::isSparkleConfigured(const BundleInfo& info)
{
    const QString key = infoText(info, "SUPublicEDKey");
    const QUrl feed(infoText(info, "SUFeedURL"), QUrl::StrictMode);
    return !key.contains(QStringLiteral("PLACEHOLDER"), Qt::CaseInsensitive) && feed.isValid() &&
           feed.scheme() == QStringLiteral("https") && isUpdateKey(key);
}

bool Updater::automaticChecksEnabled() const
{
    return backend_ && backend_->automaticallyChecksForUpdates();
}

void Updater::setAutomaticChecksEnabled(bool enabled)
{
    if (!backend_ || automaticChecksEnabled() == enabled)
        return;
    backend_->setAutomaticallyChecksForUpdates(enabled);
    Q_EMIT published();
}

void Updater::checkForUpdates()
{
    if (!backend_) {
        showNotConfiguredAlert();
        return;
    }
    leaveMenuBar(system_);
    backend_->checkForUpdates();
    system_.runLater(foregroundTime, [system = system_] { returnToMenuBar(system); });
}

void Updater::showNotConfiguredAlert() const
{
    const std::string host = Product::vendorHost;
    const std::string advice = system_.updateAdvice.empty() ? "" : "\n\n" + L10n::t(system_.updateAdvice);
    comeToForeground(system_);
    system_.runAlert({.title = L10n::t("updates_not_configured"),
                      .text = L10n::tf("updates_text", {host, host}) + advice,
                      .buttons = {L10n::t("ok")}});
    returnToMenuBar(system_);
}

}  // namespace quenchly
