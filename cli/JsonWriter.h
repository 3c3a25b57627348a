#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace cli {

/// Builds one JSON document; every object of an array begins a line.
/// The caller calls the begin and end operations in pairs and `key` before every value of an object.
class JsonWriter {
public:
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

    /// What has been written so far.
    const std::string& document() const { return text; }

private:
    std::string& separated();

    enum class Place { AtStart, AfterKey, AfterValue };

    std::string text;
    Place place = Place::AtStart;
};

} // namespace cli
