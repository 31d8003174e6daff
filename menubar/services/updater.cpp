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

Updater::Updater(System system, QObject* parent) : QObject(parent), system_(std::move(system)) {}

Updater::~Updater() = default;

UpdaterBackend* Updater::backend() const
{
    if (!backend_)
        backend_ = startedBackend();
    return backend_->get();
}

std::unique_ptr<UpdaterBackend> Updater::startedBackend() const
{
    if (!isSparkleConfigured(system_.bundleInfo)) {
        system_.log(
            "Quenchly: Sparkle not configured (missing/placeholder SUFeedURL or SUPublicEDKey); updater not started.");
        return nullptr;
    }
    auto backend = system_.startUpdaterBackend();
    if (backend)
        backend->setAutomaticallyDownloadsUpdates(false);
    else
        system_.log("Quenchly: Sparkle is configured but could not be loaded; updater not started.");
    return backend;
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
    return isConfigured() && backend()->automaticallyChecksForUpdates();
}

void Updater::setAutomaticChecksEnabled(bool enabled)
{
    if (!isConfigured() || automaticChecksEnabled() == enabled)
        return;
    backend()->setAutomaticallyChecksForUpdates(enabled);
    Q_EMIT published();
}

void Updater::checkForUpdates()
{
    if (!isConfigured()) {
        showNotConfiguredAlert();
        return;
    }
    leaveMenuBar(system_);
    backend()->checkForUpdates();
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
