#pragma once
// A small installation of the three sibling programs, built from the demo catalogue that
// ships with the program, so that every update, archive and removal can be seen at work
// without the real programs.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/material/material_record.h"
#include "core/platform/settings_store.h"

namespace ostrel {

inline constexpr const char* kDemoCatalogueName = "demo_glasses.csv";
// The row kind of the catalogue program's own rows in the demo database.
inline constexpr int16_t kDemoRowKind = 1;

struct DemoGlass {
    std::string maker;
    std::string name;
    int16_t polytype = 0;
    std::array<double, 6> coef{};
    std::string nd, vd;
    float density = 0;
    int16_t wvMin = 0, wvMax = 0;
    std::string status;
    // Internal transmission rows: wavelength in nm, transmission 0..1, thickness in mm.
    std::vector<std::array<float, 3>> trans;
};

// Reads the catalogue text (comma-separated, '#' lines are comments). False with the line
// and reason in `message` on the first bad line.
bool ParseDemoCatalogue(const std::string& text, std::vector<DemoGlass>& glasses,
                        std::string& message);
// The full record of a demo glass, as the catalogue program holds it.
MaterialRecord DemoGlassRecord(const DemoGlass& glass);

// Builds DIR/Lumbrak (Lumbrak3D.EXE, STFenmarkExA.dat, SPFenmark.dat), DIR/Sextane
// (LumbrakSextaneTD.EXE) and DIR/Kelmora (KelmoraTD.EXE, FenmarkExA.mdb with the catalogue's
// rows), and stores the three folders in the settings with the first run done. Refuses a
// folder that already holds a database. False with the reason in `message`.
bool CreateDemoInstallation(const std::string& dir, const std::vector<DemoGlass>& glasses,
                            SettingsStore& settings, std::string& message);

}  // namespace ostrel
