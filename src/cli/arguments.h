#pragma once
// The checks every command puts on its arguments. A bad argument is refused before the
// command runs, with a message naming it, and the exit status 2 (kExitUsage); a command
// that runs and is refused by the program's own rules ends with 1.
#include <CLI/CLI.hpp>
#include <iosfwd>
#include <string>
#include <vector>

namespace ostrel::cli {

// A finite number written in full ("1.5", "-2e3", "+7"); NaN, Inf, a blank text or one
// with anything after the number is none.
bool ParseFiniteNumber(const std::string& text, double& value);

// Any finite number.
const CLI::Validator& FiniteNumber();
// A finite number above 0: a wavelength, a width.
const CLI::Validator& PositiveNumber();
// A dispersion form that can be evaluated: 1 Schott, 2 Sellmeier, 3 Schott Plus,
// 4 Cauchy, 6 Sellmeier Plus, 7 and 8.
const CLI::Validator& PolytypeCode();
// A GlassID of the database, a whole number from 1, or ALL.
const CLI::Validator& GlassIdOrAll();
// A path that is not a folder. A file that is not there passes: the command says that
// it cannot read it, or writes it.
const CLI::Validator& NotAFolder();
// A name or source that the glass files can hold as typed, and not blank.
const CLI::Validator& StoredName();
// A demonstration catalogue that can be read and holds at least one glass.
const CLI::Validator& DemoCatalogueFile();

// FIRST and LAST given in order, FIRST at least 1; false with a message otherwise.
bool RangeInOrder(const std::vector<int>& range, std::ostream& err);
// FIRST..LAST in order and inside 1..count; false with a message otherwise, as "No
// materials 5 to 9 in a list of 3" for `what` "materials" and `among` "in a list of".
bool RangeInside(int first, int last, int count, const std::string& what, const std::string& among,
                 std::ostream& err);

}  // namespace ostrel::cli
