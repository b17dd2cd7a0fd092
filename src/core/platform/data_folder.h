#pragma once
#include <string>

namespace ostrel {

// The per-user data folder: $XDG_DATA_HOME/Ostrel, else ~/.local/share/Ostrel.
std::string DefaultDataFolder();

// Run at start-up: removes the temporary files that writes of processes now gone left in
// the data folder and in the folder of the settings file (a save killed midway). Returns
// how many were removed.
int SweepStaleTemporaries(const std::string& dataFolder);

}  // namespace ostrel
