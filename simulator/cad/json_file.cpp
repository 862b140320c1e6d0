#include "simulator/cad/json_file.h"

#include <algorithm>
#include <fstream>
#include <iterator>
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

// The way to the value at which reading breaks off, as the values before it lead there.
std::string PlaceOfBreak(const std::string& bytes) {
    struct Level {
        bool isList = false;
        std::size_t index = 0;
        std::string key;
    };
    std::vector<Level> levels;
    const auto follow = [&levels](int, Json::parse_event_t event, Json& parsed) {
        using Event = Json::parse_event_t;
        if (event == Event::object_start || event == Event::array_start)
            levels.push_back({event == Event::array_start, 0, {}});
        if (event == Event::object_end || event == Event::array_end) levels.pop_back();
        if (event == Event::key) levels.back().key = parsed.get<std::string>();
        const bool isWhole = event == Event::value || event == Event::object_end || event == Event::array_end;
        if (isWhole && !levels.empty()) ++levels.back().index;
        return true;
    };
    try {
        [[maybe_unused]] const Json whole = Json::parse(bytes, follow);
    } catch (const Json::exception&) {
        // Expected: the levels now stand where it broke off.
    }
    std::string place;
    for (const Level& level : levels) place += "/" + (level.isList ? std::to_string(level.index) : level.key);
    return place.empty() ? "/" : place;
}

Json Parse(const std::string& bytes, const std::string& label) {
    try {
        return Json::parse(bytes);
    } catch (const Json::out_of_range&) {
        throw ModelFileError(label + ": " + PlaceOfBreak(bytes) +
                             ": expected a number between -1.79e308 and 1.79e308");
    } catch (const Json::parse_error& error) {
        const std::size_t end = std::min(error.byte == 0 ? 0 : error.byte - 1, bytes.size());
        const auto line =
            1 + std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(end), '\n');
        // The library's own words, without its number and position.
        std::string what = error.what();
        if (const std::size_t dash = what.find(": syntax error"); dash != std::string::npos)
            what = what.substr(dash + 2);
        throw ModelFileError(label + ":" + std::to_string(line) + ": expected JSON: " + what);
    }
}

}  // namespace

Json ReadJsonFile(const fs::path& file, const std::string& label) {
    return Parse(ReadBytes(file, label), label);
}

}  // namespace sim
