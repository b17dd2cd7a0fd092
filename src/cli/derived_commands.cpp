// glasscode ND VD: the glass code of an index and an Abbe number.
// transtable FILE --width MM: the fixed-wavelength absorption table and the colour code of
// a transmission curve given as rows "wave_nm,absorption_per_mm".
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "cli/arguments.h"
#include "cli/cli_context.h"
#include "core/material/material_record.h"
#include "core/optics/glass_code.h"
#include "core/optics/trans_calcs.h"
#include "core/platform/number_text.h"
#include "core/platform/text.h"

namespace ostrel::cli {

namespace {

std::string ShortNumber(double v) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.7g", v);
    return buf;
}

struct TransPoint {
    float wave = 0;
    float absorb = 0;
};

// Reads the rows of a curve. Blank lines and lines that do not start with a number (a
// heading, a remark) are passed over; a missing second field reads 0.
bool ReadTransFile(const std::string& path, std::vector<TransPoint>& points, std::ostream& err) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        err << "Cannot read " << path << '\n';
        return false;
    }
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const auto comma = line.find(',');
        const std::string first = VbTrimCopy(line.substr(0, comma));
        if (!IsValidNumber(first)) continue;
        TransPoint p;
        p.wave = static_cast<float>(Val(first));
        if (comma != std::string::npos) p.absorb = static_cast<float>(Val(line.substr(comma + 1)));
        points.push_back(p);
    }
    if (points.size() > static_cast<size_t>(kMaxTransPoints)) {
        err << "At most " << kMaxTransPoints << " transmission points can be held\n";
        return false;
    }
    // The calculations expect the curve in descending order of wavelength.
    std::stable_sort(points.begin(), points.end(),
                     [](const TransPoint& a, const TransPoint& b) { return a.wave > b.wave; });
    return true;
}

int RunTransTable(const std::string& path, float width, bool json, CliContext& ctx) {
    std::vector<TransPoint> points;
    if (!ReadTransFile(path, points, *ctx.err)) return kExitRefused;

    auto rec = std::make_unique<MaterialRecord>(ClearedMaterialRecord());
    auto& m = rec->Measured;
    for (size_t i = 0; i < points.size(); ++i) {
        m.TransWave[i] = points[i].wave;
        m.TransAbsorb[i] = points[i].absorb;
        m.TransInternal[i] = InternalFromAbsorb(width, points[i].absorb);
    }
    m.TransPoints = static_cast<int16_t>(points.size());
    m.TransWidth = width;
    m.TransType = 2;

    FillTransTable(rec->TransTable, width, m.TransWave, m.TransAbsorb);
    ColourCode(*rec, width, m.TransWave, m.TransInternal);

    std::ostream& out = *ctx.out;
    if (json) {
        // The record's names: the table beside its fixed wavelengths, and the colour code.
        nlohmann::ordered_json j;
        j["TransTableWave"] = TransTableWave;
        j["TransTable"] = rec->TransTable;
        j["CC"] = rec->Other.CC.Text();
        out << j.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
        return kExitOk;
    }
    for (size_t i = 0; i < TransTableWave.size(); ++i) {
        out << ShortNumber(TransTableWave[i]) << '\t' << ShortNumber(rec->TransTable[i]) << '\n';
    }
    out << rec->Other.CC.Text() << '\n';
    return kExitOk;
}

}  // namespace

void RegisterDerivedCommands(CLI::App& app, CliContext& ctx) {
    struct Args {
        std::string nd, vd;
        std::string file;
        float width = 10.0f;
        bool json = false;
    };
    auto args = std::make_shared<Args>();

    auto* code = app.add_subcommand("glasscode", "Glass code of an index nd and Abbe number vd");
    code->add_option("ND", args->nd, "Index at the d line")->required()->check(FiniteNumber());
    code->add_option("VD", args->vd, "Abbe number")->required()->check(FiniteNumber());
    code->add_flag("--json", args->json, "Write JSON");
    code->callback([args, &ctx] {
        ctx.run = [args, &ctx] {
            if (args->json) {
                *ctx.out << nlohmann::ordered_json{{"GlassCode", MakeGlassCode(args->nd, args->vd)}}
                                .dump(2)
                         << '\n';
            } else {
                *ctx.out << MakeGlassCode(args->nd, args->vd) << '\n';
            }
            return kExitOk;
        };
    });

    auto* table = app.add_subcommand(
        "transtable", "Absorption at the fixed wavelengths and colour code of a curve");
    table->add_option("FILE", args->file, "Rows wave_nm,absorption_per_mm")
        ->required()
        ->check(NotAFolder());
    table->add_option("--width", args->width, "Plate thickness in mm for the interpolation")
        ->capture_default_str()
        ->check(PositiveNumber());
    table->add_flag("--json", args->json, "Write JSON");
    table->callback([args, &ctx] {
        ctx.run = [args, &ctx] { return RunTransTable(args->file, args->width, args->json, ctx); };
    });
}

}  // namespace ostrel::cli
