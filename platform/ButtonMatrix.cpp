#include "platform/ButtonMatrix.h"

#include <QGridLayout>
#include <QRadioButton>

namespace platform {

ButtonMatrix::ButtonMatrix(QWidget* parent)
    : QWidget(parent),
      grid(new QGridLayout(this))
{
    grid->setContentsMargins(0, 0, 0, 0);
}

void ButtonMatrix::setRows(int rows)
{
    rowCount = std::max(rows, 0);
    rebuild();
}

void ButtonMatrix::setColumns(int columns)
{
    columnCount = std::max(columns, 0);
    rebuild();
}

void ButtonMatrix::rebuild()
{
    qDeleteAll(cells);
    cells.clear();
    for (int index = 0; index < rowCount * columnCount; ++index) {
        auto* button = new QRadioButton(this);
        // Radio buttons of their own would never go without a selection.
        button->setAutoExclusive(false);
        connect(button, &QRadioButton::clicked, this, [this, index] {
            selectCell(index);
            emit cellClicked(index);
        });
        grid->addWidget(button, index / columnCount, index % columnCount);
        cells.push_back(button);
    }
}

QAbstractButton* ButtonMatrix::cell(int index) const
{
    return index >= 0 && index < static_cast<int>(cells.size()) ? cells[size_t(index)] : nullptr;
}

QString ButtonMatrix::title(int index) const
{
    const QAbstractButton* button = cell(index);
    return button ? button->text() : QString();
}

void ButtonMatrix::setTitle(int index, const QString& title)
{
    if (QAbstractButton* button = cell(index))
        button->setText(title);
}

int ButtonMatrix::selectedCell() const
{
    for (size_t i = 0; i < cells.size(); ++i) {
        if (cells[i]->isChecked())
            return static_cast<int>(i);
    }
    return -1;
}

int ButtonMatrix::selectedRow() const
{
    const int index = selectedCell();
    return index < 0 ? -1 : index / columnCount;
}

int ButtonMatrix::selectedColumn() const
{
    const int index = selectedCell();
    return index < 0 ? -1 : index % columnCount;
}

void ButtonMatrix::selectCell(qint64 index)
{
    for (size_t i = 0; i < cells.size(); ++i)
        cells[i]->setChecked(qint64(i) == index);
}

} // namespace platform
