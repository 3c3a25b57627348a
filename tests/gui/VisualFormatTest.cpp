#include "platform/VisualFormat.h"

#include <QWidget>
#include <gtest/gtest.h>

using platform::VisualFormat;

TEST(LayoutFormat, GivesGapsAndFixedLengthsFirst)
{
    struct Case {
        const char* format;
        double length;
        std::vector<std::pair<double, double>> expected;
    };
    const Case cases[] = {
        {"H:|-0-[_a]-0-|", 100, {{0, 100}}},
        {"H:|-10-[_a]-10-[_b(==334)]-10-|", 1020, {{10, 656}, {676, 334}}},
        {"V:|-0-[_a]-4-[_b(==130)]-4-[_c(==72)]-0-|", 582, {{0, 372}, {376, 130}, {510, 72}}},
        {"|[_a][_b]|", 50, {{0, 25}, {25, 25}}},
        {"H:|-10-[_a]-10-[_b(==334)]-10-|", 100, {{10, 0}, {20, 334}}},
    };
    for (const auto& [text, length, expected] : cases) {
        SCOPED_TRACE(text);
        const auto format = VisualFormat::parsed(text);
        ASSERT_TRUE(format);
        const auto spans = format->spans(length);
        ASSERT_EQ(spans.size(), expected.size());
        for (size_t i = 0; i < spans.size(); ++i) {
            EXPECT_DOUBLE_EQ(spans[i].start, expected[i].first);
            EXPECT_DOUBLE_EQ(spans[i].length, expected[i].second);
        }
    }
}

TEST(LayoutFormat, RefusesWhatItDoesNotKnow)
{
    for (const char* text : {"", "|", "||", "H:|-0-[_a]", "H:|-0-[_a(==)]-0-|", "H:|-x-[_a]-0-|",
             "H:|-0-[_a]-0-|x", "H:|-0-[_a(>=3)]-0-|", "H:[_a]-0-|", "H:|-0-[]-0-|", "H:|-0-[_a-0-|"})
        EXPECT_FALSE(VisualFormat::parsed(text)) << text;
}

TEST(LayoutFormat, FollowsTheContainersSize)
{
    QWidget container;
    QWidget a(&container);
    QWidget b(&container);
    platform::FormatLayout layout(container);
    const QHash<QString, QWidget*> views{{"_a", &a}, {"_b", &b}};
    layout.add("H:|-10-[_a]-10-[_b(==30)]-0-|", views);
    layout.add("V:|-5-[_a]-5-|", views);
    layout.add("V:|-0-[_nobody]-0-|", views);
    container.resize(200, 100);
    layout.apply();
    EXPECT_EQ(a.geometry(), QRect(10, 5, 150, 90));
    EXPECT_EQ(b.x(), 170);
    layout.removeAll();
    layout.add("H:|-0-[_a]-0-|", views);
    layout.apply();
    EXPECT_EQ(a.width(), 200);
}
