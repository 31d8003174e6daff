#include "icon_files.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QtEndian>
#include <algorithm>
#include <map>
#include <string>

#include "application_icon.h"

namespace quenchly {
namespace {

/// The icon's committed file. With QUENCHLY_ACCEPT_OUTPUT=1 it is written anew; look at it before committing it.
void expectCommitted(const char* name, const QByteArray& made)
{
    QFile file(QStringLiteral(QUENCHLY_ICONS "/") + QString::fromLatin1(name));
    if (qEnvironmentVariableIsSet("QUENCHLY_ACCEPT_OUTPUT")) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(made);
        file.close();
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    EXPECT_EQ(file.readAll().toStdString(), made.toStdString());
}

TEST(IconFiles, TheCommittedScalableIconIsTheDrawing)
{
    expectCommitted("quenchly.svg", IconFiles::svg());
}

TEST(IconFiles, TheCommittedSymbolicIconIsTheGust)
{
    expectCommitted("quenchly-symbolic.svg", IconFiles::symbolicSvg());
}

TEST(IconFiles, TheScalableIconHoldsThePlateTheShadeAndThreePolygons)
{
    const std::string svg = IconFiles::svg().toStdString();
    EXPECT_NE(svg.find("viewBox=\"0 0 256 256\""), std::string::npos);
    EXPECT_NE(svg.find("<stop offset=\"0\" stop-color=\"#39495a\"/>"), std::string::npos);
    EXPECT_NE(svg.find("<stop offset=\"1\" stop-color=\"#202a33\"/>"), std::string::npos);
    const std::string gust = svg.substr(svg.find("fill=\"#f7f1e4\""));
    EXPECT_EQ(std::count(gust.begin(), gust.end(), 'M'), 3);
    EXPECT_EQ(std::count(gust.begin(), gust.end(), 'L'), 25 + 23 + 12 - 3);
}

TEST(IconFiles, APictureHasItsSizeAndTheDrawing)
{
    for (const int pixels : {16, 48, 512}) {
        const QImage picture = QImage::fromData(IconFiles::png(pixels), "PNG");
        EXPECT_EQ(picture.convertToFormat(QImage::Format_ARGB32),
                  applicationIcon(pixels, 1).convertToFormat(QImage::Format_ARGB32))
            << pixels;
    }
}

TEST(IconFiles, TheBundlesIconHoldsEverySize)
{
    const QByteArray icns = IconFiles::icns();
    ASSERT_GT(icns.size(), 8);
    EXPECT_TRUE(icns.startsWith("icns"));
    EXPECT_EQ(qFromBigEndian<quint32>(icns.constData() + 4), icns.size());
    const std::map<std::string, int> sizes{{"ic11", 32},  {"ic12", 64},  {"ic07", 128}, {"ic13", 256},
                                           {"ic08", 256}, {"ic14", 512}, {"ic09", 512}, {"ic10", 1024}};
    std::map<std::string, int> found;
    for (qsizetype at = 8; at + 8 <= icns.size();) {
        const auto length = static_cast<qsizetype>(qFromBigEndian<quint32>(icns.constData() + at + 4));
        ASSERT_GT(length, 8);
        ASSERT_LE(at + length, icns.size());
        const QImage picture = QImage::fromData(icns.mid(at + 8, length - 8), "PNG");
        EXPECT_EQ(picture.width(), picture.height());
        found[icns.mid(at, 4).toStdString()] = picture.width();
        at += length;
    }
    EXPECT_EQ(found, sizes);
}

TEST(IconFiles, TheBundlesIconLeavesAMargin)
{
    const QByteArray icns = IconFiles::icns();
    const QImage largest = QImage::fromData(icns.mid(icns.indexOf("ic10") + 8), "PNG");
    ASSERT_EQ(largest.width(), 1024);
    EXPECT_EQ(qAlpha(largest.pixel(512, 98)), 0);
    EXPECT_EQ(qAlpha(largest.pixel(512, 102)), 255);
    EXPECT_EQ(qAlpha(largest.pixel(98, 512)), 0);
    EXPECT_EQ(qAlpha(largest.pixel(921, 512)), 255);
    EXPECT_EQ(qAlpha(largest.pixel(925, 512)), 0);
}

}  // namespace
}  // namespace quenchly
