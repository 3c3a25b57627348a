#include "lib/VisualFormat.h"

#include "common/Log.h"

#include <QEvent>
#include <QWidget>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

class Reader {
public:
    explicit Reader(std::string_view text)
        : rest(text)
    {
    }

    bool take(std::string_view token)
    {
        if (!rest.starts_with(token))
            return false;
        rest.remove_prefix(token.size());
        return true;
    }

    std::optional<double> number()
    {
        double value = 0;
        const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
        if (error != std::errc())
            return std::nullopt;
        rest.remove_prefix(static_cast<size_t>(end - rest.data()));
        return value;
    }

    /// "-n-", or nothing at all for a gap of 0.
    std::optional<double> gap()
    {
        if (!take("-"))
            return 0.0;
        const auto value = number();
        return value && take("-") ? value : std::nullopt;
    }

    std::optional<VisualFormat::View> view()
    {
        const size_t end = rest.find_first_of("(]");
        if (end == std::string_view::npos || end == 0)
            return std::nullopt;
        VisualFormat::View view;
        view.name = QString::fromUtf8(rest.data(), qsizetype(end));
        rest.remove_prefix(end);
        if (take("(==")) {
            view.length = number();
            if (!view.length || !take(")"))
                return std::nullopt;
        }
        return take("]") ? std::optional(view) : std::nullopt;
    }

    bool atEnd() const { return rest.empty(); }

private:
    std::string_view rest;
};

} // namespace

std::optional<VisualFormat> VisualFormat::parsed(std::string_view text)
{
    Reader reader(text);
    VisualFormat format;
    format.isVertical = reader.take("V:");
    if (!format.isVertical)
        reader.take("H:");
    if (!reader.take("|"))
        return std::nullopt;
    while (true) {
        const auto gap = reader.gap();
        if (!gap)
            return std::nullopt;
        if (reader.take("|")) {
            format.gapAfter = *gap;
            return reader.atEnd() && !format.views.empty() ? std::optional(format) : std::nullopt;
        }
        if (!reader.take("["))
            return std::nullopt;
        auto view = reader.view();
        if (!view)
            return std::nullopt;
        view->gapBefore = *gap;
        format.views.push_back(*view);
    }
}

std::vector<VisualFormat::Span> VisualFormat::spans(double containerLength) const
{
    double left = containerLength - gapAfter;
    size_t flexible = 0;
    for (const View& view : views) {
        left -= view.gapBefore + view.length.value_or(0);
        flexible += view.length ? 0 : 1;
    }
    const double share = flexible ? std::max(0.0, left / double(flexible)) : 0;
    std::vector<Span> spans;
    double position = 0;
    for (const View& view : views) {
        const double length = view.length.value_or(share);
        spans.push_back({position + view.gapBefore, length});
        position = spans.back().start + length;
    }
    return spans;
}

FormatLayout::FormatLayout(QWidget& view)
    : container(view)
{
    container.installEventFilter(this);
}

void FormatLayout::removeAll()
{
    entries.clear();
}

void FormatLayout::add(std::string_view text, const QHash<QString, QWidget*>& views)
{
    Entry entry;
    if (const auto format = VisualFormat::parsed(text)) {
        entry.format = *format;
        for (const auto& view : format->views)
            entry.views.emplace_back(views.value(view.name));
    }
    if (entry.views.empty()
        || std::ranges::any_of(entry.views, [](const auto& view) { return view.isNull(); })) {
        logFormat("invalid layout format: %.*s", int(text.size()), text.data());
        return;
    }
    entries.push_back(std::move(entry));
}

void FormatLayout::apply()
{
    for (const Entry& entry : entries) {
        const double length = entry.format.isVertical ? container.height() : container.width();
        const auto spans = entry.format.spans(length);
        for (size_t i = 0; i < spans.size(); ++i) {
            QWidget* view = entry.views[i];
            if (!view)
                continue;
            const int start = int(std::lround(spans[i].start));
            const int extent = int(std::lround(spans[i].start + spans[i].length)) - start;
            QRect frame = view->geometry();
            if (entry.format.isVertical)
                frame = QRect(frame.x(), start, frame.width(), extent);
            else
                frame = QRect(start, frame.y(), extent, frame.height());
            view->setGeometry(frame);
        }
    }
}

bool FormatLayout::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        apply();
    return QObject::eventFilter(watched, event);
}
