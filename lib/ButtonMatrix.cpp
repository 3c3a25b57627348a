#include "lib/ButtonMatrix.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QRadioButton>

ButtonMatrix::ButtonMatrix(QWidget* parent)
    : QWidget(parent),
      grid(new QGridLayout(this))
{
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(8);
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
        button->installEventFilter(this);
        connect(button, &QRadioButton::clicked, this, [this, index] { choose(index); });
        grid->addWidget(button, index / columnCount, index % columnCount);
        cells.push_back(button);
    }
    updateTabStop();
}

void ButtonMatrix::choose(int cell)
{
    selectCell(cell);
    emit cellClicked(cell);
}

bool ButtonMatrix::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        for (size_t i = 0; i < cells.size(); ++i) {
            if (cells[i] == watched)
                return moveFrom(static_cast<int>(i), static_cast<QKeyEvent*>(event)->key());
        }
    }
    return QWidget::eventFilter(watched, event);
}

/// True when the key is an arrow key; the selection stays inside the matrix.
bool ButtonMatrix::moveFrom(int from, int key)
{
    int row = from / columnCount;
    int column = from % columnCount;
    switch (key) {
    case Qt::Key_Left:
        --column;
        break;
    case Qt::Key_Right:
        ++column;
        break;
    case Qt::Key_Up:
        --row;
        break;
    case Qt::Key_Down:
        ++row;
        break;
    default:
        return false;
    }
    if (row < 0 || row >= rowCount || column < 0 || column >= columnCount)
        return true;
    const int wanted = row * columnCount + column;
    if (!cells[size_t(wanted)]->isEnabled())
        return true;
    cells[size_t(wanted)]->setFocus(Qt::OtherFocusReason);
    choose(wanted);
    return true;
}

void ButtonMatrix::updateTabStop()
{
    const int stop = std::max(selectedCell(), 0);
    for (size_t i = 0; i < cells.size(); ++i)
        cells[i]->setFocusPolicy(static_cast<int>(i) == stop ? Qt::StrongFocus : Qt::ClickFocus);
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

void ButtonMatrix::selectCell(qint64 index)
{
    for (QAbstractButton* button : cells)
        button->setAutoExclusive(false); // exclusive buttons cannot all be unchecked
    for (size_t i = 0; i < cells.size(); ++i)
        cells[i]->setChecked(qint64(i) == index);
    for (QAbstractButton* button : cells)
        button->setAutoExclusive(true);
    updateTabStop();
}
