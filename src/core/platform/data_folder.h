#pragma once
#include <string>

namespace ostrel {

// The per-user data folder: $XDG_DATA_HOME/Ostrel, else ~/.local/share/Ostrel.
std::string DefaultDataFolder();

// Run at start-up: removes the temporary files that writes of processes now gone left in
// the data folder and in the folder of the settings file (a save killed midway; the
// per-user file when `settingsPath` is empty). Returns how many were removed.
int SweepStaleTemporaries(const std::string& dataFolder, const std::string& settingsPath = {});

}  // namespace ostrel
