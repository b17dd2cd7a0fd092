#include "core/import/refit_to_schott.h"

#include <cmath>
#include <string>

#include "core/optics/index_fit.h"
#include "core/optics/index_from_polynomial.h"

namespace ostrel {

namespace {

// Passes everything on, with the fit's boxes led by a line that names the glass.
class NamingDialogs : public Dialogs {
  public:
    NamingDialogs(Dialogs& inner, std::string firstLine)
        : inner_(inner), firstLine_(std::move(firstLine)) {}
    MsgAnswer MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                     const std::string& title) override {
        return inner_.MsgBox(firstLine_ + "\n" + text, buttons, icon, title);
    }
    std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                        const std::string& proposal) override {
        return inner_.InputBox(prompt, title, proposal);
    }
    std::optional<std::string> FileOpen(const FileDialogSpec& spec) override {
        return inner_.FileOpen(spec);
    }
    std::optional<std::string> FileSave(const FileDialogSpec& spec) override {
        return inner_.FileSave(spec);
    }
    void SetBusy(bool busy) override { inner_.SetBusy(busy); }
    void HelpNote(const std::string& text, bool bold) override { inner_.HelpNote(text, bold); }
    bool OpenUrl(const std::string& url) override { return inner_.OpenUrl(url); }

  private:
    Dialogs& inner_;
    std::string firstLine_;
};

}  // namespace

std::string RefitFailedLine(const std::string& glass) {
    return "The refit of " + glass + " to the Schott form failed; the glass is left out.";
}

bool RefitToSchottFrom(MaterialRecord& rec, const IndexEvaluator& index, float& meanError,
                       Dialogs& dialogs, float* noIndexAt) {
    if (noIndexAt) *noIndexAt = 0;
    auto& g = rec.General;
    const float low = g.IndexWvMin;
    const float high = g.IndexWvMax;
    const float step = (high - low) / 20.0f;
    if (!(step > 0.0f)) return false;
    MeasuredData work{};
    int points = 0;
    for (float w = low; w <= high && points < kMaxIndexPoints; w += step) {
        double n = 0;
        if (!index(w, n)) {
            if (noIndexAt && *noIndexAt == 0) *noIndexAt = w;
            continue;
        }
        const auto k = static_cast<size_t>(points++);
        work.IndexWave[k] = w;
        work.IndexWaveUm[k] = w * 0.001;
        work.IndexValue[k] = n;
        work.IndexSquared[k] = n * n;
        work.IndexWeight[k] = 1.0f;
    }
    NamingDialogs named(dialogs, RefitFailedLine(g.GlassName.Text()));
    if (FitSchottCoefficients(static_cast<int16_t>(points), g.PolyCoef, work, named) != kTrue) {
        return false;
    }
    meanError = static_cast<float>(std::sqrt(work.FitError / points));
    g.Polytype = 1;
    return true;
}

bool RefitToSchott(MaterialRecord& rec, float& meanError, Dialogs& dialogs, float* noIndexAt) {
    auto& g = rec.General;
    if (g.Polytype == 8 && g.IndexWvMin < 650) g.IndexWvMin = 650;
    const PolyCoefBlock coef = g.PolyCoef;
    const int16_t type = g.Polytype;
    return RefitToSchottFrom(
        rec,
        [&coef, type](float w, double& n) {
            int16_t ok = 0;
            n = IndexFromPolynomial(coef, w, type, ok);
            return ok != 0 && std::isfinite(n);
        },
        meanError, dialogs, noIndexAt);
}

bool IsRefittableAgfFormula(int formula) {
    switch (formula) {
        case 4:
        case 6:
        case 7:
        case 8:
        case 9:
        case 10:
        case 11:
        case 12:
        case 13:
            return true;
        default:
            return false;
    }
}

bool AgfFormulaIndex(int formula, const std::vector<double>& coef, double lambdaUm, double& n) {
    auto c = [&coef](size_t i) { return i < coef.size() ? coef[i] : 0.0; };
    const double l2 = lambdaUm * lambdaUm;
    if (!(l2 > 0)) return false;
    bool good = true;
    // term c_a λ² / (λ² - d)
    auto pole = [&](double a, double d) {
        const double den = l2 - d;
        if (den == 0) {
            good = false;
            return 0.0;
        }
        return a * l2 / den;
    };
    double n2 = 0;
    switch (formula) {
        case 4:  // Sellmeier 2
            n2 = 1 + c(0) + pole(c(1), c(2) * c(2)) + pole(c(3), c(4) * c(4));
            break;
        case 6:  // Sellmeier 3
            n2 = 1 + pole(c(0), c(1)) + pole(c(2), c(3)) + pole(c(4), c(5)) + pole(c(6), c(7));
            break;
        case 7: {  // Handbook 1
            const double den = l2 - c(2);
            if (den == 0) return false;
            n2 = c(0) + c(1) / den - c(3) * l2;
            break;
        }
        case 8:  // Handbook 2
            n2 = c(0) + pole(c(1), c(2)) - c(3) * l2;
            break;
        case 9:  // Sellmeier 4
            n2 = c(0) + pole(c(1), c(2)) + pole(c(3), c(4));
            break;
        case 10:  // Extended
            n2 = c(0) + c(1) * l2;
            for (int k = 1; k <= 6; ++k) n2 += c(static_cast<size_t>(k + 1)) * std::pow(l2, -k);
            break;
        case 11:  // Sellmeier 5
            n2 = 1;
            for (size_t k = 0; k < 5; ++k) n2 += pole(c(2 * k), c(2 * k + 1));
            break;
        case 12:  // Extended 2
            n2 = c(0) + c(1) * l2 + c(2) / l2 + c(3) * std::pow(l2, -2) + c(4) * std::pow(l2, -3) +
                 c(5) * std::pow(l2, -4) + c(6) * l2 * l2 + c(7) * l2 * l2 * l2;
            break;
        case 13:  // Extended 3
            n2 = c(0) + c(1) * l2 + c(2) * l2 * l2;
            for (int k = 1; k <= 6; ++k) n2 += c(static_cast<size_t>(k + 2)) * std::pow(l2, -k);
            break;
        default:
            return false;
    }
    if (!good || !std::isfinite(n2) || n2 <= 0) return false;
    n = std::sqrt(n2);
    return true;
}

}  // namespace ostrel
