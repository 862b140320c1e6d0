// Why a step of a run failed, in words.
#pragma once

#include <string>

#include "model/run_record.h"

namespace kv {

// The reason of an entry that failed, for people; empty for one that did not. A status that the table does
// not know is named by its number.
std::wstring ReasonText(const RunEntry& entry);

}  // namespace kv
