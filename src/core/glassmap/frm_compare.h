#pragma once
// The comparison of materials: two or more glasses, custom or catalogue, seen together as
// their index n(λ) over the band they have in common, the index difference Δn(λ) against
// the first, and their internal transmission at one width. The window draws Curves(); the
// files are written from the same numbers.
#include <string>
#include <vector>

#include "core/material/material_record.h"
#include "core/platform/controls.h"

namespace ostrel {

// A material that can be compared: its label ("name (source)") and full record.
struct CompareItem {
    std::string label;
    MaterialRecord rec;
    bool catalogue = false;
};

// The label of a material among those compared: "name (source)".
std::string CompareLabel(const MaterialRecord& rec);

// The custom list's materials, then the catalogue's from the database's current table
// (its custom rows left out: they are the list's own). `note` says why no catalogue glass
// is there when the database could not be read.
std::vector<CompareItem> CompareItems(const std::vector<MaterialRecord>& customList,
                                      const std::string& kelmoraFolder, bool kelmoraFound,
                                      std::string& note);

struct CompareCurves {
    std::vector<std::string> labels;
    // The common band of the index data, nm; empty when the materials share none.
    double bandMin = 0, bandMax = 0;
    std::vector<double> wave;                // nm
    std::vector<std::vector<double>> index;  // per material, at `wave`
    std::vector<std::vector<double>> delta;  // index less the first material's
    float width = 10;                        // mm
    // Internal transmission in percent at the catalogue wavelengths, per material; NaN
    // where a material has no data.
    std::vector<double> transWave;
    std::vector<std::vector<double>> internal;
};

// A tick of a plot axis: where it stands and what it reads.
struct AxisTick {
    double value = 0;
    std::string text;
};
// The value axis of a compare plot: the range of the finite values with a margin of 5% each
// side, and about five ticks at round steps (NiceTicks, whose tick at zero is zero), each
// read with the printf `format`. The window and the SVG both draw it.
struct CompareAxis {
    double lo = 0, hi = 1;
    std::vector<AxisTick> ticks;
};
CompareAxis CompareValueAxis(const std::vector<std::vector<double>>& ys, const char* format);
// The tick formats of the three plots: index, index difference, internal transmission.
inline constexpr const char* kCompareValueFormats[3] = {"%.4f", "%.5f", "%.0f"};

// The index band of a record: its stated band, or the common range of the glasses
// (365 to 1014 nm) when none is stated.
void IndexBand(const MaterialRecord& rec, double& lo, double& hi);
// Computes the curves; false with the reason in `message` (fewer than two materials, no
// common band, an index that cannot be computed).
bool CompareMaterials(const std::vector<const CompareItem*>& items, float width, int samples,
                      CompareCurves& curves, std::string& message);
// One row per wavelength: wavelength, each index, each Δn; then one row per transmission
// wavelength: wavelength and each internal transmission (blank without data).
std::string CompareCsv(const CompareCurves& curves);
// The three plots, one below the other, with a legend.
std::string CompareSvg(const CompareCurves& curves, int width, int height);
// The colour of the i-th material, 0xRRGGBB.
uint32_t CompareColour(int i);

class frmCompare {
  public:
    explicit frmCompare(std::vector<CompareItem> items);

    ListControl lstMaterials{true};  // the materials; the selected ones are compared
    NumberBox txtWidth;              // mm
    Label lblStatus;
    Picture picPlots;  // notified whenever the curves change

    // Selects the materials at the given positions of the list (in the order given: the
    // first is the reference of Δn) and compares them.
    void SelectMaterials(const std::vector<int>& positions);
    // The same for the materials with the given labels; with fewer than two of them found,
    // the status line says `note` (why the catalogue's glasses are missing), if there is one.
    void SelectLabelled(const std::vector<std::string>& labels, const std::string& note);
    void lstMaterialsClick();
    void txtWidthChange();

    const CompareCurves& Curves() const { return curves_; }
    bool HasCurves() const { return ok_; }
    const std::vector<CompareItem>& Items() const { return items_; }

  private:
    void Recompute();

    std::vector<CompareItem> items_;
    std::vector<int> order_;  // selected positions in the order chosen
    CompareCurves curves_;
    bool ok_ = false;
};

}  // namespace ostrel
