#include "lib/ButtonMatrix.h"
#include "lib/DriveStrip.h"
#include "lib/InterfaceHelpers.h"
#include "lib/SegmentedControl.h"
#include "tests/support/GuiTesting.h"

TEST(SegmentedControl, IsNeverNarrowerThanItsLabelsAndNamesEachSegment)
{
    SegmentedControl control;
    const QString label = QStringLiteral("높음 (SUV, 승합차)");
    setSegmentLabels(control, {label, "2"});
    const QFontMetrics metrics(control.font());
    EXPECT_GT(control.minimumSizeHint().width(), metrics.horizontalAdvance(label));
    QAccessibleInterface* segment = QAccessible::queryAccessibleInterface(control.segment(0));
    EXPECT_EQ(segment->role(), QAccessible::RadioButton);
    EXPECT_EQ(segment->text(QAccessible::Name), label);

    control.segment(1)->click();
    EXPECT_EQ(control.selectedSegment(), 1);
    EXPECT_EQ(control.segment(1)->focusPolicy(), Qt::NoFocus) << "the control is the one tab stop";
    control.setSelectedSegment(-1);
    EXPECT_FALSE(control.segment(1)->isChecked());
}

TEST(PushButton, IsNeverNarrowerThanItsText)
{
    QWidget bar;
    QHBoxLayout row(&bar);
    QPushButton button(QStringLiteral("Format Card…"));
    row.addWidget(&button);
    bar.resize(1, 1);
    bar.show();
    EXPECT_GT(button.width(), QFontMetrics(button.font()).horizontalAdvance(button.text()));
}

TEST(ButtonMatrix, ArrowsMoveInRowsAndColumnsAndOneCellTakesTheTabStop)
{
    ButtonMatrix matrix;
    matrix.setRows(2);
    matrix.setColumns(3);
    std::vector<int> clicked;
    QObject::connect(
        &matrix, &ButtonMatrix::cellClicked, &matrix, [&](int cell) { clicked.push_back(cell); });
    matrix.selectCell(2);
    for (const int key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up, Qt::Key_Up})
        press(*matrix.cell(std::max(matrix.selectedCell(), 0)), key);
    EXPECT_EQ(clicked, (std::vector<int>{5, 4, 1}));
    for (int cell = 0; cell < 6; ++cell)
        EXPECT_EQ((matrix.cell(cell)->focusPolicy() & Qt::TabFocus) != 0, cell == 1) << cell;
    matrix.deselectAllCells();
    EXPECT_NE(matrix.cell(0)->focusPolicy() & Qt::TabFocus, 0) << "still reachable without a selection";
}

TEST(DriveStrip, GoesWhereTheLeftButtonPressesAndDragsAndHoldsStillMeanwhile)
{
    DriveStrip strip;
    strip.resize(214, 22);
    std::vector<double> moves;
    QObject::connect(&strip, &DriveStrip::moved, [&](double fraction) { moves.push_back(fraction); });
    QTest::mouseClick(&strip, Qt::LeftButton, {}, {107, 11});
    EXPECT_TRUE(moves.empty()) << "no drive is there";
    strip.setSegments({{0, 0.5}, {0.5, 1}}, {});
    QTest::mouseClick(&strip, Qt::RightButton, {}, {107, 11});
    EXPECT_TRUE(moves.empty());
    QTest::mousePress(&strip, Qt::LeftButton, {}, {107, 11});
    strip.setPosition(0.1);
    EXPECT_NEAR(strip.position(), 0.5, 0.01) << "the drive that plays on does not take it from the hand";
    QTest::mouseMove(&strip, {500, 40});
    QTest::mouseRelease(&strip, Qt::LeftButton, {}, {500, 40});
    EXPECT_EQ(moves.size(), 2U);
    EXPECT_EQ(strip.position(), 1) << "outside is at the end";
    strip.setPosition(0.1);
    EXPECT_EQ(strip.position(), 0.1);
}
