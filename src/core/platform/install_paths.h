#pragma once
// The program's version and where it finds the data it is installed with: the user guide
// and the demonstration catalogue.
//
// An installed program keeps its data under its own prefix: PREFIX/bin/ostrel beside
// PREFIX/share/doc/ostrel (the guide) and PREFIX/share/ostrel (the catalogue). A program
// run from its build folder finds the same layout staged in the build folder
// (BUILD/share/...), however deep below it the program lies. The source tree is never
// looked at, so an installed program works the same wherever its sources went.
#include <string>

namespace ostrel {

// The project's version, "major.minor.revision".
const char* ProgramVersion();

// The full path of the running program; blank when the system does not tell.
std::string RunningProgramPath();

enum class InstalledData {
    Guide,          // share/doc/ostrel: the user guide's HTML pages
    DemoCatalogue,  // share/ostrel: demo_glasses.csv
};

// The folder of `kind` for the program at `programPath`: the first share/... folder found
// beside the program's folder or one of its parents (four levels up at most). Blank when
// there is none.
std::string InstalledDataFolder(InstalledData kind,
                                const std::string& programPath = RunningProgramPath());

// The demonstration catalogue file that the program at `programPath` is installed with;
// blank when there is none.
std::string InstalledDemoCatalogue(const std::string& programPath = RunningProgramPath());

}  // namespace ostrel
