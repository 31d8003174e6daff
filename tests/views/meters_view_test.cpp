#include "meters_view.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QTest>
#include <set>
#include <string>

#include "help_icon.h"

namespace quenchly {
namespace {

constexpr std::uint32_t red = 0xFF4040;

MeterContent meter(const char* label, const char* subtitle, const char* value)
{
    return {.label = label, .help = "Help.", .subtitle = subtitle, .value = value, .accent = red};
}

class MetersViewTest : public ::testing::Test {
protected:
    void show(const MetricsMeters& meters)
    {
        view.setContent(meters);
        view.setFixedWidth(296);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    }

    std::set<int> helpPlaces() const
    {
        std::set<int> places;
        for (const HelpIcon* help : view.findChildren<HelpIcon*>())
            places.insert(help->mapTo(&view, QPoint()).x());
        return places;
    }

    /// Where the ink of a label ends below, in quarters of a point from the meters' upper edge.
    int lowestInk(const QLabel& label) const
    {
        constexpr int scale = 4;
        QImage picture(label.size() * scale, QImage::Format_ARGB32_Premultiplied);
        picture.setDevicePixelRatio(scale);
        picture.fill(Qt::transparent);
        const_cast<QLabel&>(label).render(&picture, {}, {}, QWidget::DrawChildren);
        int lowest = -1;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (picture.pixelColor(x, y).alpha() > 128)
                    lowest = y;
        return label.mapTo(&view, QPoint()).y() * scale + lowest;
    }

    MetersView view;
};

TEST_F(MetersViewTest, LabelsAndFiguresStandOnOneBaseline)
{
    show({.load = meter("111", "111", "111"), .swap = meter("111", "111", "111")});
    for (const MeterView* row : view.findChildren<MeterView*>()) {
        std::set<int> baselines;
        for (const QLabel* label : row->findChildren<QLabel*>())
            baselines.insert(lowestInk(*label));
        EXPECT_EQ(baselines.size(), 1U) << ::testing::PrintToString(baselines);
    }
}

TEST_F(MetersViewTest, TheHelpIconsStandInOneColumnWhateverTheFigures)
{
    show({.load = meter("load", "", "3%"), .swap = meter("extra memory on disk", "12 GB", "95%")});
    const std::set<int> places = helpPlaces();
    EXPECT_EQ(places.size(), 1U) << ::testing::PrintToString(places);
    for (const char* value : {"n/a", "8%", "100%"}) {
        view.setContent({.load = meter("load", "", value), .swap = meter("swap", "88.8 GB", value)});
        QCoreApplication::processEvents();
        EXPECT_EQ(helpPlaces(), places) << value;
    }
    view.setContent({.load = meter("load", "", "1234567%"), .swap = meter("swap", "1234567 GB", "95%")});
    QCoreApplication::processEvents();
    EXPECT_EQ(helpPlaces().size(), 1U);
}

}  // namespace
}  // namespace quenchly
