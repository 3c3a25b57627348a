#include "settings/pages/ValidationText.h"

#include "platform/Texts.h"

std::optional<QString> localizedMessage(const std::optional<ValidationMessage>& message)
{
    if (!message)
        return std::nullopt;
    const QString text = platform::localized(message->key);
    if (!message->range)
        return text;
    return QString::asprintf(text.toUtf8().constData(), message->range->first, message->range->second);
}
