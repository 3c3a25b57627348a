#pragma once

#include <cstdint>
#include <ostream>
#include <string_view>

namespace cli {

/// Writes one JSON document; every object of an array begins a line.
/// The caller calls the begin and end operations in pairs and `key` before every value of an object.
class JsonWriter {
public:
    explicit JsonWriter(std::ostream& stream)
        : out(stream)
    {
    }

    JsonWriter& beginObject();
    JsonWriter& endObject();
    JsonWriter& beginArray();
    JsonWriter& endArray();
    JsonWriter& key(std::string_view name);

    JsonWriter& string(std::string_view bytes);
    JsonWriter& integer(int64_t number);
    /// null for infinities and NaN.
    JsonWriter& number(double number);
    JsonWriter& boolean(bool value);

private:
    std::ostream& separated();

    enum class Place { AtStart, AfterKey, AfterValue };

    std::ostream& out;
    Place place = Place::AtStart;
};

} // namespace cli
