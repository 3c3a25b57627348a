#pragma once

#include <QString>
#include <QWidget>

#include <vector>

class QAbstractButton;
class QGridLayout;

/// Radio cells in rows and columns, of which one, or none, is selected. The index of a cell is
/// row x columns + column. One stop in the tab order, at the selected cell; arrow keys move the selection.
class ButtonMatrix : public QWidget {
    Q_OBJECT
    Q_PROPERTY(int rows READ rows WRITE setRows)
    Q_PROPERTY(int columns READ columns WRITE setColumns)

public:
    explicit ButtonMatrix(QWidget* parent = nullptr);

    int rows() const { return rowCount; }
    int columns() const { return columnCount; }
    void setRows(int rows);
    void setColumns(int columns);

    QString title(int cell) const;
    void setTitle(int cell, const QString& title);
    QAbstractButton* cell(int index) const;

    /// -1 when nothing is selected.
    int selectedCell() const;
    /// Reports nothing. An index that is no cell leaves the matrix without a selection.
    void selectCell(qint64 cell);
    void deselectAllCells() { selectCell(-1); }

signals:
    /// The user chose a cell; also when it was selected already.
    void cellClicked(int cell);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void rebuild();
    void choose(int cell);
    bool moveFrom(int cell, int key);
    void updateTabStop();

    int rowCount = 0;
    int columnCount = 0;
    std::vector<QAbstractButton*> cells;
    QGridLayout* grid;
};
