// Exported files: what was asked of the host, in a form that tests and people can read.
//
// PDF files are real ones, with the record in a comment of their second line; all others hold the record
// alone, as JSON.

#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/cad/model.h"

namespace sim {

struct ExportedSheet {
    int number = 0;  // in the drawing, from 1
    std::wstring size;
    std::string space;  // "model" or "paper"; empty for PDF, which has none
    bool operator==(const ExportedSheet&) const = default;
};

struct ExportRecord {
    std::string format;  // "DWG", "DXF", "PDF", "STEP", "IGES", "SAT", "VDA": what was asked for, whatever
                         // the file's name
    std::wstring model;  // "PUMP.drw"
    std::vector<ExportedSheet> sheets;           // of a drawing, in the order of the file
    std::map<std::string, std::string> options;  // by name; only what was set, "COLOR_DEPTH" -> "2"
};

// "PUMP.drw"
std::wstring ExportLabel(const SimModel& model);

// The whole file of any format but PDF.
std::string ExportText(const ExportRecord& record);
// The whole PDF file of the drawing: a page for each sheet of the record, in colour, grey or black by the
// option COLOR_DEPTH.
std::string ExportPdf(const ExportRecord& record, const SimModel& drawing);

// The record of an exported file; nothing for other files and for one that is not complete.
std::optional<ExportRecord> ReadExport(const std::filesystem::path& file);

struct ExportedFile {
    std::filesystem::path path;  // relative to the folder that was searched
    ExportRecord record;
};
// The exported files in a folder and below it, by path.
std::vector<ExportedFile> FindExports(const std::filesystem::path& folder);

}  // namespace sim
