// SPDX-License-Identifier: GPL-3.0-or-later
// The values of residue scales as others carry them, copied from there by program: from AAindex as
// Debian's r-cran-seqinr 4.2-23 has it, from Debian's python3-biopython 1.80 and emboss-data 6.6.0.
#pragma once

#include <array>
#include <string_view>

// In this order.
inline constexpr std::string_view kReferenceLetters = "ARNDCQEGHILKMFPSTWYV";

struct ScaleReference
{
    const char *scale;
    const char *source;
    std::array<double, 20> values;
};

inline constexpr ScaleReference kScaleReferences[] = {
    {"Hydropathy", "AAindex KYTJ820101", {1.8,  -4.5, -3.5, -3.5, 2.5,  -3.5, -3.5,
                                          -0.4, -3.2, 4.5,  3.8,  -3.9, 1.9,  2.8,
                                          -1.6, -0.8, -0.7, -0.9, -1.3, 4.2}},
    {"Hydrophobicity", "Biopython ProtParamData.es", {0.62, -2.53, -0.78, -0.9, 0.29, -0.85, -0.74,
                                                      0.48, -0.4,  1.38,  1.06, -1.5, 0.64,  1.19,
                                                      0.12, -0.18, -0.05, 0.81, 0.26, 1.08}},
    {"Hydrophilicity", "AAindex HOPT810101", {-0.5, 3,    0.2,  3,    -1,   0.2,  3,
                                              0,    -0.5, -1.8, -1.8, 3,    -1.3, -2.5,
                                              0,    0.3,  -0.4, -3.4, -2.3, -1.5}},
    {"Polarity", "AAindex GRAR740102", {8.1, 10.5, 11.6, 13,  5.5, 10.5, 12.3, 9,   10.4, 5.2,
                                        4.9, 11.3, 5.7,  5.2, 8,   9.2,  8.6,  5.4, 6.2,  5.9}},
    {"Surface area", "AAindex CHOC760101", {115, 225, 160, 150, 135, 180, 190, 75,  195, 175,
                                            170, 200, 185, 210, 145, 115, 140, 255, 230, 155}},
    {"Molecular weight",
     "AAindex FASG760101",
     {89.09,  174.2,  132.12, 133.1,  121.15, 146.15, 147.13, 75.07,  155.16, 131.17,
      131.17, 146.19, 149.21, 165.19, 115.13, 105.09, 119.12, 204.24, 181.19, 117.15}},
    {"Isoelectric point", "AAindex ZIMJ680104", {6,    10.76, 5.41, 2.77, 5.05, 5.65, 3.22,
                                                 5.97, 7.59,  6.02, 5.98, 9.74, 5.74, 5.48,
                                                 6.3,  5.68,  5.66, 5.89, 5.66, 5.96}},
    {"Flexibility", "AAindex BHAR880101", {0.357, 0.529, 0.463, 0.511, 0.346, 0.493, 0.497,
                                           0.544, 0.323, 0.462, 0.365, 0.466, 0.295, 0.314,
                                           0.509, 0.507, 0.444, 0.305, 0.42,  0.386}},
    {"Helix propensity", "AAindex CHOP780201", {1.42, 0.98, 0.67, 1.01, 0.7,  1.11, 1.51,
                                                0.57, 1,    1.08, 1.21, 1.16, 1.45, 1.13,
                                                0.57, 0.77, 0.83, 1.08, 0.69, 1.06}},
    {"Strand propensity", "AAindex CHOP780202", {0.83, 0.93, 0.89, 0.54, 1.19, 1.1,  0.37,
                                                 0.75, 0.87, 1.6,  1.3,  0.74, 1.05, 1.38,
                                                 0.55, 0.75, 1.19, 1.37, 1.47, 1.7}},
    {"Turn propensity", "AAindex CHOP780101", {0.66, 0.95, 1.56, 1.46, 1.19, 0.98, 0.74,
                                               1.56, 0.95, 0.47, 0.59, 1.01, 0.6,  0.6,
                                               1.52, 1.43, 0.96, 0.96, 1.14, 0.5}},
    {"Hydropathy", "Biopython ProtParamData.kd", {1.8,  -4.5, -3.5, -3.5, 2.5,  -3.5, -3.5,
                                                  -0.4, -3.2, 4.5,  3.8,  -3.9, 1.9,  2.8,
                                                  -1.6, -0.8, -0.7, -0.9, -1.3, 4.2}},
    {"Hydrophilicity", "Biopython ProtParamData.hw", {-0.5, 3,    0.2,  3,    -1,   0.2,  3,
                                                      0,    -0.5, -1.8, -1.8, 3,    -1.3, -2.5,
                                                      0,    0.3,  -0.4, -3.4, -2.3, -1.5}},
    {"Hydropathy", "EMBOSS Eaa_hydropathy.dat, K&D", {1.8,  -4.5, -3.5, -3.5, 2.5,  -3.5, -3.5,
                                                      -0.4, -3.2, 4.5,  3.8,  -3.9, 1.9,  2.8,
                                                      -1.6, -0.8, -0.7, -0.9, -1.3, 4.2}},
    {"Hydrophobicity",
     "EMBOSS Eaa_hydropathy.dat, Consensus",
     {0.62, -2.53, -0.78, -0.9, 0.29, -0.85, -0.74, 0.48, -0.4, 1.38,
      1.06, -1.5,  0.64,  1.19, 0.12, -0.18, -0.05, 0.81, 0.26, 1.08}},
};

// Volumes of residues in solution, of the same kind of measurements as ours: AAindex GOLD730102
// (Goldsack DE, Chalifoux RC 1973).
inline constexpr std::array<double, 20> kSolutionVolumes = {
    88.3,  181.2, 125.1, 110.8, 112.4, 148.7, 140.5, 60,  152.6, 168.5,
    168.5, 175.6, 162.2, 189,   122.2, 88.7,  118.2, 227, 193,   141.4};

// Net charge, AAindex KLEP840101 (Klein P, Kanehisa M, DeLisi C 1984).
inline constexpr std::array<double, 20> kNetCharges = {0, 1, 0, -1, 0, 0, -1, 0, 0, 0,
                                                       0, 1, 0, 0,  0, 0, 0,  0, 0, 0};
