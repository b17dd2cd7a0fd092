#pragma once
// The demonstration catalogue, built into the program from data/demo/demo_glasses.csv.
namespace ostrel::cli {
extern const char* const kEmbeddedDemoCatalogue;
}
