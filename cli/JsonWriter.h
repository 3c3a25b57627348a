#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

namespace cli {

/// Writes one JSON document; every object of an array begins a line. A long one is handed on in pieces.
/// The caller calls the begin and end operations in pairs, `key` before every value of an object, and
/// `finish` at the end.
class JsonWriter {
public:
    explicit JsonWriter(std::ostream& output)
        : out(output)
    {
    }

    JsonWriter& beginObject();
    JsonWriter& endObject();
    JsonWriter& beginArray();
    JsonWriter& endArray();
    /// The name holds nothing that needs an escape.
    JsonWriter& key(std::string_view name);

    JsonWriter& string(std::string_view bytes);
    JsonWriter& integer(int64_t number);
    /// null for infinities and NaN.
    JsonWriter& number(double number);
    JsonWriter& boolean(bool value);
    JsonWriter& null();

    /// Ends the document with a line feed.
    void finish();

private:
    std::string& separated();

    enum class Place { AtStart, AfterKey, AfterValue };

    std::ostream& out;
    std::string text; // what has not been handed on yet
    Place place = Place::AtStart;
};

} // namespace cli
