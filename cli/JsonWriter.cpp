#include "cli/JsonWriter.h"

#include "cli/Escapes.h"
#include "cli/Numbers.h"

namespace cli {

std::string& JsonWriter::separated()
{
    if (place == Place::AfterValue)
        text += ',';
    place = Place::AfterValue;
    return text;
}

JsonWriter& JsonWriter::beginObject()
{
    if (place == Place::AfterValue)
        separated() += '\n';
    if (constexpr size_t pieceSize = 65536; text.size() > pieceSize) {
        out << text;
        text.clear();
    }
    text += '{';
    place = Place::AtStart;
    return *this;
}

JsonWriter& JsonWriter::endObject()
{
    text += '}';
    place = Place::AfterValue;
    return *this;
}

JsonWriter& JsonWriter::beginArray()
{
    separated() += '[';
    place = Place::AtStart;
    return *this;
}

JsonWriter& JsonWriter::endArray()
{
    text += ']';
    place = Place::AfterValue;
    return *this;
}

JsonWriter& JsonWriter::key(std::string_view name)
{
    separated().append("\"").append(name).append("\":");
    place = Place::AfterKey;
    return *this;
}

JsonWriter& JsonWriter::string(std::string_view bytes)
{
    separated() += jsonString(bytes);
    return *this;
}

JsonWriter& JsonWriter::integer(int64_t number)
{
    separated() += std::to_string(number);
    return *this;
}

JsonWriter& JsonWriter::number(double number)
{
    separated() += numberText(number).value_or("null");
    return *this;
}

JsonWriter& JsonWriter::boolean(bool value)
{
    separated() += (value ? "true" : "false");
    return *this;
}

JsonWriter& JsonWriter::null()
{
    separated() += "null";
    return *this;
}

void JsonWriter::finish()
{
    out << text << '\n';
    text.clear();
}

} // namespace cli
