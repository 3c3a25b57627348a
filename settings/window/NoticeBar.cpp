#include "settings/window/NoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <utility>

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent),
      label(new QLabel(this)),
      button(new QPushButton(this))
{
    setObjectName(QStringLiteral("noticeBar"));
    label->setObjectName(QStringLiteral("noticeLabel"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    button->setObjectName(QStringLiteral("noticeButton"));
    button->setAutoDefault(true);
    button->hide();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(14, 6, 12, 6);
    row->setSpacing(12);
    // Keeps the page below in place when the button is shown or hidden.
    setMinimumHeight(button->sizeHint().height() + 12);
    row->addWidget(label, 1);
    row->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this] {
        // The work may set another notice.
        if (const auto work = action)
            work();
    });
}

void NoticeBar::setNotice(const QString& text, const QString& buttonText, std::function<void()> work)
{
    label->setText(text);
    button->setText(buttonText);
    button->setVisible(!buttonText.isEmpty());
    action = std::move(work);
}
