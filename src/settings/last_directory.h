// The working directory kept from one session of the host to the next.
#pragma once

namespace kv {

// Moves the host to the directory of its last session when the setting SetLastDir is "1". Nothing happens
// when none was kept or it is gone.
void RestoreLastDirectory();

// Keeps the working directory for the next session, whatever SetLastDir says.
void SaveLastDirectory();

}  // namespace kv
