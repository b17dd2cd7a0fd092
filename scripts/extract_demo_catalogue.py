#!/usr/bin/env python3
"""Builds data/demo/demo_glasses.csv, the small catalogue of the demo installation, from
maker catalogues in AGF text form.

Usage: extract_demo_catalogue.py AGF_FOLDER > data/demo/demo_glasses.csv

Only facts are taken: name, dispersion formula and its coefficients, nd, vd, density,
waveband and the internal transmission rows. Formula 1 (Schott) keeps its order; formula 2
(Sellmeier, interleaved K1 L1 K2 L2 K3 L3 in the file) is stored B1 B2 B3 C1 C2 C3.
"""
import sys
from pathlib import Path

PICKS = {
    "Schott": ("SCHOTT.AGF", ["N-BK7", "K7", "F2", "N-SF11", "N-F2", "N-BAK4", "N-SK16",
                              "N-LAK9", "N-SF6", "N-KZFS4", "N-FK5", "N-SF5"]),
    "Ohara": ("OHARA.agf", ["S-BSL7", "S-BAH11", "S-LAH64", "S-TIH6", "S-FPL51", "S-NSL36",
                            "S-BAL35", "S-TIM2", "S-LAL14"]),
    "Hoya": ("HOYA.AGF", ["BSC7", "FCD1", "TAF1", "E-FD10", "BACD5", "LAC14", "NBFD10",
                          "FD60", "E-F2"]),
    "CDGM": ("CDGM.AGF", ["H-K9L", "H-ZF7LA", "H-LAK51A", "H-ZK9B", "H-BAK7", "F4",
                          "H-QK3L", "D-ZK3", "H-ZF52"]),
}
# AGF status: 0 standard, 1 preferred, 2 obsolete, 3 special, 4 melt.
STATUS = {"0": "A", "1": "R", "2": "O", "3": "A", "4": "A"}


def read_agf(path):
    glasses = {}
    cur = None
    for raw in path.read_text(encoding="latin-1").splitlines():
        tok = raw.split()
        if not tok:
            continue
        if tok[0] == "NM":
            cur = {"name": tok[1], "formula": int(float(tok[2])), "nd": tok[4], "vd": tok[5],
                   "status": tok[7] if len(tok) > 7 else "0", "it": []}
            glasses[cur["name"]] = cur
        elif cur is None:
            continue
        elif tok[0] == "ED":
            cur["density"] = tok[3]
        elif tok[0] == "CD":
            cur["cd"] = [float(t) for t in tok[1:]]
        elif tok[0] == "LD":
            cur["ld"] = (float(tok[1]), float(tok[2]))
        elif tok[0] == "IT" and len(tok) >= 4:
            cur["it"].append((float(tok[1]), float(tok[2]), float(tok[3])))
    return glasses


def main():
    folder = Path(sys.argv[1])
    print("# Demo catalogue: maker,name,polytype,c1..c6,nd,vd,density,wvmin,wvmax,status,"
          "transmission (nm/internal/thickness mm, space separated)")
    for maker, (fname, names) in PICKS.items():
        glasses = read_agf(folder / fname)
        for name in names:
            g = glasses.get(name)
            if g is None or g["formula"] not in (1, 2) or "cd" not in g:
                continue
            cd = g["cd"]
            if g["formula"] == 1:
                poly, coef = 1, cd[:6]
            else:
                poly, coef = 2, [cd[0], cd[2], cd[4], cd[1], cd[3], cd[5]]
            lo, hi = g.get("ld", (0.0, 0.0))
            it = " ".join(f"{w * 1000:g}/{t:g}/{d:g}" for w, t, d in g["it"])
            fields = [maker, name, str(poly)] + [repr(c) for c in coef] + [
                g["nd"], g["vd"], g.get("density", "0"), str(round(lo * 1000)),
                str(round(hi * 1000)), STATUS.get(g["status"], "A"), it]
            print(",".join(fields))


if __name__ == "__main__":
    main()
