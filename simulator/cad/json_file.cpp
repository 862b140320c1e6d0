#include "simulator/cad/json_file.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <system_error>
#include <vector>

#include "simulator/cad/model_file.h"

namespace sim {

namespace fs = std::filesystem;

namespace {

std::string ReadBytes(const fs::path& file, const std::string& label) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::system_error(std::make_error_code(std::errc::io_error), label);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// The way to the value at which reading breaks off, as the values before it lead there: because it is no
// JSON, or its key has been there before.
std::string PlaceOfBreak(const std::string& bytes) {
    struct Level {
        bool isList = false;
        std::size_t index = 0;
        std::string key;
        std::set<std::string> keys = {};
    };
    struct KeyTwice {};
    std::vector<Level> levels;
    const auto follow = [&levels](int, Json::parse_event_t event, Json& parsed) {
        using Event = Json::parse_event_t;
        if (event == Event::object_start || event == Event::array_start)
            levels.push_back({event == Event::array_start, 0, {}});
        if (event == Event::object_end || event == Event::array_end) levels.pop_back();
        if (event == Event::key) levels.back().key = parsed.get<std::string>();
        if (event == Event::key && !levels.back().keys.insert(levels.back().key).second) throw KeyTwice();
        const bool isWhole = event == Event::value || event == Event::object_end || event == Event::array_end;
        if (isWhole && !levels.empty()) ++levels.back().index;
        return true;
    };
    try {
        [[maybe_unused]] const Json whole = Json::parse(bytes, follow);
    } catch (const Json::exception&) {
        // Expected: the levels now stand where it broke off.
    } catch (const KeyTwice&) {
        // The same.
    }
    std::string place;
    for (const Level& level : levels) place += "/" + (level.isList ? std::to_string(level.index) : level.key);
    return place.empty() ? "/" : place;
}

// How often a key stands in the text of a whole JSON value: a colon that is in no text follows each.
std::size_t KeysIn(const std::string& bytes) {
    std::size_t keys = 0;
    bool isText = false;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '"') isText = !isText;
        if (isText && bytes[i] == '\\') ++i;
        if (!isText && bytes[i] == ':') ++keys;
    }
    return keys;
}

// How many keys came out of it: one less for each that stood there twice in one object.
std::size_t KeysIn(const Json& value) {
    std::size_t keys = 0;
    std::vector<const Json*> open = {&value};
    while (!open.empty()) {
        const Json& next = *open.back();
        open.pop_back();
        if (next.is_object()) keys += next.size();
        for (const Json& entry : next)
            if (entry.is_structured()) open.push_back(&entry);
    }
    return keys;
}

std::size_t LineAt(const std::string& bytes, std::size_t place) {
    const std::size_t end = std::min(place, bytes.size());
    return 1 + static_cast<std::size_t>(
                   std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
}

Json Parse(const std::string& bytes, const std::string& label) {
    try {
        return Json::parse(bytes);
    } catch (const Json::out_of_range&) {
        throw ModelFileError(label + ": " + PlaceOfBreak(bytes) +
                             ": expected a number between -1.79e308 and 1.79e308");
    } catch (const Json::parse_error& error) {
        const std::size_t line = LineAt(bytes, error.byte == 0 ? 0 : error.byte - 1);
        // The library's own words, without its number and position.
        std::string what = error.what();
        if (const std::size_t dash = what.find(": syntax error"); dash != std::string::npos)
            what = what.substr(dash + 2);
        throw ModelFileError(label + ":" + std::to_string(line) + ": expected JSON: " + what);
    }
}

}  // namespace

Json ReadJsonFile(const fs::path& file, const std::string& label) {
    const std::string bytes = ReadBytes(file, label);
    // To the library the text ends there, whatever follows.
    if (const std::size_t zero = bytes.find('\0'); zero != std::string::npos)
        throw ModelFileError(label + ":" + std::to_string(LineAt(bytes, zero)) + ": expected no zero byte");
    Json json = Parse(bytes, label);
    if (KeysIn(json) != KeysIn(bytes))
        throw ModelFileError(label + ": " + PlaceOfBreak(bytes) + ": expected each key once");
    return json;
}

}  // namespace sim
