#include "lib/ButtonMatrix.h"
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
