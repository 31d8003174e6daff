#include <QFile>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "icon_files.h"

namespace {

constexpr int mostPixels = 4096;

QByteArray content(std::string_view format)
{
    using namespace quenchly;
    if (format == "svg")
        return IconFiles::svg();
    if (format == "symbolic")
        return IconFiles::symbolicSvg();
    if (format == "icns")
        return IconFiles::icns();
    const int pixels = std::atoi(format.data());
    return pixels > 0 && pixels <= mostPixels ? IconFiles::png(pixels) : QByteArray();
}

}  // namespace

/// Writes the application's icon in one format.
int main(int argc, char** argv)
{
    const QByteArray bytes = argc == 3 ? content(argv[1]) : QByteArray();
    if (bytes.isEmpty()) {
        std::fputs("usage: quenchly-icon svg|symbolic|icns|PIXELS FILE\n", stderr);
        return 2;
    }
    QFile file(QFile::decodeName(argv[2]));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        std::fprintf(stderr, "quenchly-icon: cannot write %s: %s\n", argv[2], qPrintable(file.errorString()));
        return 1;
    }
    return 0;
}
