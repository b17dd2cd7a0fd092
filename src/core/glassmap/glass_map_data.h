#pragma once
// The glasses of the glass map: the catalogue glasses of the database's current table and
// the materials of the custom list, each as a point in nd, vd and PgF; the normal line of
// the partial dispersion diagram; and the catalogue glasses nearest to a point.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/material/material_record.h"
#include "core/platform/database.h"

namespace ostrel {

enum class GlassKind { Catalogue, Custom, Melt };

struct GlassPoint {
    std::string name, source;
    double nd = 0, vd = 0;
    // The partial dispersion PgF; 0 when the glass has none, and then it is left out of the
    // partial dispersion diagram.
    double pgf = 0;
    int32_t glassCode = 0;
    GlassKind kind = GlassKind::Catalogue;
    // Catalogue glasses: index into GlassMapData::sources.
    int sourceIndex = -1;
    // Custom and melt glasses: 1-based position in the custom list.
    int listPosition = 0;
    // Melt glasses: index of the parent's point, -1 when the parent is not on the map.
    int parent = -1;
    // Melt glasses: the parent's name and source as the record names them.
    std::string parentName, parentSource;
};

struct GlassMapData {
    std::vector<GlassPoint> points;
    // The catalogue's sources (makers), sorted.
    std::vector<std::string> sources;
    // Glasses without a valid nd or vd, not on the map.
    int leftOutCatalogue = 0;
    int leftOutCustom = 0;
    // Why no catalogue glass is shown ("" when the database was read).
    std::string catalogueNote;
    bool catalogueRead = false;
};

// The map's rule for a usable point: nd and vd finite, nd above 1 and below 4, vd above 0
// and below 200. Anything else is a missing or damaged value.
bool ValidMapValues(double nd, double vd);
bool ValidPgF(double pgf);

// Adds every record of the custom list: a record with the melt flag set is a melt glass.
void AddCustomPoints(const std::vector<MaterialRecord>& list, GlassMapData& data);
// Adds the rows of the database's current table. The custom rows (s1 = 8) are the custom
// list's own materials put there by an update and are not shown twice.
bool AddCataloguePoints(Database& db, GlassMapData& data, DbError& error);
// Joins each melt glass to its parent (name and source compared as the custom list
// compares them), a custom parent before a catalogue one. Run after all points are in.
void LinkMeltParents(GlassMapData& data);

// The normal line of the partial dispersion diagram, PgF = a + b vd, through the
// catalogue's K7 and F2 (the first of each found, any source). None when either is missing
// or lacks a PgF, or their vd are equal.
struct NormalLine {
    double a = 0, b = 0;
    double At(double vd) const { return a + b * vd; }
};
std::optional<NormalLine> FindNormalLine(const GlassMapData& data);

// The setting of the nd weight: a difference of 1/scale in nd weighs like 1.0 in vd.
inline constexpr double kDefaultNdScale = 100.0;
double MapDistance(double nd1, double vd1, double nd2, double vd2, double ndScale);

struct NearGlass {
    int point = -1;
    double distance = 0;
};
// The `count` catalogue glasses nearest to (nd, vd), nearest first, ties in map order.
// `sourceOn` (when given, one flag per source) leaves out the switched-off sources.
std::vector<NearGlass> NearestGlasses(const GlassMapData& data, double nd, double vd, int count,
                                      double ndScale, const std::vector<bool>* sourceOn = nullptr);

// "Catalogue", "Custom" or "Melt".
const char* KindName(GlassKind kind);

}  // namespace ostrel
