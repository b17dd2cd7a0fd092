#pragma once
#include <string>

namespace ostrel {

// The per-user data folder: $XDG_DATA_HOME/Ostrel, else ~/.local/share/Ostrel.
std::string DefaultDataFolder();

}  // namespace ostrel
