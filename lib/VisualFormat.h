#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>

#include <optional>
#include <string_view>
#include <vector>

class QWidget;

/// One parsed layout format: "H:|-10-[_left]-10-[_right(==334)]-10-|".
/// "V:" runs from top to bottom, "H:" (or no prefix) from left to right. Between the container's edges
/// ("|") and the views stand gaps in points ("-10-"); a view may carry a fixed length "(==n)".
struct VisualFormat {
    struct View {
        QString name;
        double gapBefore = 0;
        std::optional<double> length;
    };

    bool isVertical = false;
    std::vector<View> views;
    double gapAfter = 0;

    /// Nothing when the text does not follow the grammar.
    static std::optional<VisualFormat> parsed(std::string_view text);

    struct Span {
        double start = 0;
        double length = 0;
    };
    /// The place of each view along a container of the given length. What is left over by fixed lengths
    /// and gaps is shared equally by the views without a length; nothing becomes negative.
    std::vector<Span> spans(double containerLength) const;
};

/// Lays out a container's children by formats and keeps doing so when the container is resized.
class FormatLayout final : public QObject {
public:
    explicit FormatLayout(QWidget& container);

    void removeAll();
    /// Names in the format are looked up in `views`; a format that cannot be used is logged and left out.
    void add(std::string_view format, const QHash<QString, QWidget*>& views);
    /// Applies the formats now.
    void apply();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Entry {
        VisualFormat format;
        std::vector<QPointer<QWidget>> views;
    };

    QWidget& container;
    std::vector<Entry> entries;
};
