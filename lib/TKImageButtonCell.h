#pragma once

class QPainter;
class QRectF;

/// The stretchable three-part background of a text button: raised while the button is on, sunken while it is
/// off or held down.
/// Part of the widget library; not used by the program's own windows.
class TKImageButtonCell {
public:
    void setState(bool isOn) { on = isOn; }
    bool state() const { return on; }

    /// The background of the present state, across the frame.
    void drawBezelWithFrame(QPainter& painter, const QRectF& frame) const;
    /// The background of a held button when the flag is set; nothing otherwise.
    void highlight(bool flag, QPainter& painter, const QRectF& frame) const;

private:
    bool on = false;
};
