#pragma once

#include "fx/EffectCatalogue.h"

namespace orvantesco::effect_pages {

/// The five knobs of each effect: caption, read-out name, unit, scale, initial value.
using Page = FxParameter[kFxParamCount];
using S = FxScale;

inline constexpr Page kOff{};

inline constexpr Page kFrequencyShift{{"FREQ", "FREQ SHIFT", " Hz", S::shiftFrequency, 0.5},
                                      {"SCALE", "FREQSHIFT SCALE", " x", S::shiftDecade, 0.0},
                                      {"FB", "FRQ SHIFT FB", " %", S::percent, 0.0},
                                      {"SPREAD", "FRQ SHIFT SPREAD", " %", S::bipolarPercent, 0.5},
                                      {"MIX", "FREQSHIFT MIX", " %", S::percent, 1.0}};

inline constexpr Page kRingMod{{"FREQ", "RINGMOD FREQ", " Hz", S::ringFrequency, 0.1},
                               {"SHAPE", "RINGMOD SHAPE", " %", S::percent, 0.0},
                               {"WIDTH", "RINGMOD WIDTH", " %", S::percent, 1.0},
                               {"SPREAD", "RINGMOD SPREAD", " %", S::bipolarPercent, 0.5},
                               {"MIX", "RINGMOD MIX", " %", S::squaredPercent, 1.0}};

inline constexpr Page kPhaser{{"PHASE", "PHASE BASE", " %", S::percent, 0.5},
                              {"DEPTH", "PHASE DEPTH", " %", S::percent, 1.0},
                              {"STAGES", "PHASE STAGES", "", S::phaserStages, 0.0},
                              {"SPREAD", "PHASE SPREAD", " %", S::bipolarPercent, 0.5},
                              {"FB", "PHASE FEEDBACK", " %", S::percent, 0.5}};

inline constexpr Page kPitchShift{{"COARSE", "PITCH COARSE", " ST", S::semitones, 0.5},
                                  {"FINE", "PITCH FINE", " CNT", S::bipolarPercent, 0.5},
                                  {"SIZE", "PITCH BUF SIZE", " ms", S::bufferMs, 0.5},
                                  {"DETUNE", "PITCH SPREAD", " %", S::bipolarPercent, 0.5},
                                  {"MIX", "PITCH SHIFT MIX", " %", S::percent, 0.5}};

inline constexpr Page kPitchShiftStereo{{"COARSE L", "PITCH1 COARSE ", " ST", S::semitones, 0.5},
                                        {"COARSE R", "PITCH2 COARSE", " ST", S::semitones, 0.5},
                                        {"SIZE", "PITCH BUF SIZE", " ms", S::bufferMs, 0.5},
                                        {"DETUNE", "PITCH DETUNE", " %", S::percent, 0.1},
                                        {"MIX", "PITCH SHIFT MIX", " %", S::percent, 0.5}};

inline constexpr Page kWaveShape{{"MODE", "SHAPE MODE", "", S::shapeMode, 0.0},
                                 {"GAIN", "GAIN", " dB", S::gain24Db, 0.0},
                                 {"FREQ", "FILTER FREQ", " Hz", S::frequency, 0.0},
                                 {"Q", "FILTER Q", " %", S::shapeQ, 0.0},
                                 {"SPREAD", "SHAPE FILTER SPREAD", " %", S::bipolarPercent, 0.5}};

inline constexpr Page kShaper{{"GAIN", "SHAPE AMOUNT ", " %", S::percent, 0.0},
                              {"LOPASS", "SHAPER FILTER FREQ", " HZ", S::frequency, 1.0},
                              {"Q", "FILTER RES", " %", S::percent, 0.0},
                              {"SPREAD", "SHAPE FILTER SPREAD", " %", S::bipolarPercent, 0.5},
                              {"MIX", "SHAPE MIX ", " %", S::percent, 1.0}};

inline constexpr Page kShaperFeedback{
    {"GAIN", "SHAPE AMOUNT ", " %", S::percent, 0.0},
    {"FREQ", "SHAPER FILTER FREQ", " HZ", S::frequency, 1.0},
    {"MODE", "FILTER MODE", "", S::shaperFilterMode, 0.0},
    {"SPREAD", "SHAPE FILTER SPREAD", " %", S::bipolarPercent, 0.5},
    {"MIX", "SHAPE MIX ", " %", S::percent, 0.5}};

inline constexpr Page kLofiTwo{{"DRIVE", "LOFI DRIVE ", "", S::percent, 0.0},
                               {"NOISE", "LOFI NOISE", " %", S::percent, 0.0},
                               {"DNSAMPLE", "LOFI DOWNSAMPLE", " %", S::percent, 0.0},
                               {"BITCRUSH", "LOFI BITCRUSH", " %", S::percent, 0.0},
                               {"MIX", "LOFI MIX ", " %", S::percent, 1.0}};

inline constexpr Page kLofiOne{{"RATE", "LOFI AMOUNT ", " %", S::percent, 0.0},
                               {"HIPASS", "LOFI FILTER FREQ", " HZ", S::frequency, 0.0},
                               {"Q", "LOFI RES", " %", S::percent, 0.0},
                               {"SPREAD", "LOFI FILTER SPREAD", " %", S::bipolarPercent, 0.5},
                               {"MIX", "LOFI MIX ", " %", S::percent, 1.0}};

inline constexpr Page kLofiOneFeedback{
    {"RATE", "LOFI AMOUNT ", " %", S::percent, 0.0},
    {"FREQ", "LOFI FILTER FREQ", " HZ", S::frequency, 0.0},
    {"MODE", "FILTER MODE", "", S::shaperFilterMode, 0.0},
    {"SPREAD", "LOFI FILTER SPREAD", " %", S::bipolarPercent, 0.5},
    {"MIX", "LOFI MIX ", " %", S::percent, 0.5}};

inline constexpr Page kStateVariable{{"FREQ", "FILTER FREQ", " HZ", S::frequency, 0.5},
                                     {"Q", "FILTER Q", " %", S::percent, 0.0},
                                     {"SPREAD", "FILTER SPREAD", " %", S::bipolarPercent, 0.5},
                                     {"MODE", "FILTER MODE", "", S::svfMode, 0.0},
                                     {"MIX", "FILTER MIX", " %", S::percent, 1.0}};

inline constexpr Page kSteep{{"FREQ", "FILTER FREQ", " HZ", S::frequency, 0.5},
                             {"Q", "FILTER Q", " %", S::percent, 0.0},
                             {"SPREAD", "FILTER SPREAD", " %", S::bipolarPercent, 0.5},
                             {"MODE", "FILTER MODE", "", S::steepMode, 0.0},
                             {"MIX", "FILTER MIX", " %", S::percent, 1.0}};

inline constexpr Page kMulti{{"FREQ", "FILTER FREQ", " HZ", S::frequency, 0.5},
                             {"Q", "FILTER Q", " %", S::percent, 0.0},
                             {"SPREAD", "FILTER SPREAD", " %", S::bipolarPercent, 0.5},
                             {"MODE", "FILTER MODE", "", S::multiMode, 0.0},
                             {"MIX", "FILTER MIX", " %", S::percent, 1.0}};

inline constexpr Page kMultiFeedback{{"FREQ", "FILTER FREQ", " HZ", S::frequency, 0.5},
                                     {"SLOPE", "FILTER SLOPE", "", S::filterSlope, 0.0},
                                     {"SPREAD", "FILTER SPREAD", " %", S::bipolarPercent, 0.5},
                                     {"MODE", "FILTER MODE", "", S::multiMode, 0.0},
                                     {"MIX", "FILTER MIX", " %", S::percent, 1.0}};

inline constexpr Page kPeak{{"FREQ", "FILTER FREQ", " HZ", S::frequency, 0.5},
                            {"Q", "FILTER Q", " %", S::percent, 0.0},
                            {"SPREAD", "FILTER SPREAD", " %", S::bipolarPercent, 0.5},
                            {"GAIN", "PEAK GAIN", " dB", S::peakGainDb, 0.5},
                            {"DIM", "DIM", " %", S::percent, 1.0}};

// The read-out of its mix speaks of a spread, and users look for it under that name: it stays.
inline constexpr Page kPhaseFilter{{"FREQ", "PHASEBP FILTER FREQ", " HZ", S::frequency, 0.5},
                                   {"Q", "FILTER Q", " %", S::percent, 0.0},
                                   {"SPREAD", "FILTER SPREAD", " %", S::bipolarPercent, 0.5},
                                   {"POLES", "FILTER POLES", "", S::phaseFilterPoles, 0.0},
                                   {"MIX", "FRQ SHIFT SPREAD", " %", S::percent, 1.0}};

inline constexpr Page kComb{{"FREQ", "COMB FRQ", " Hz", S::combFrequency, 0.0},
                            {"FB", "COMB FEEDBACK", " %", S::percent, 0.5},
                            {"HIPASS", "COMB HIPASS", " Hz", S::frequency, 0.0},
                            {"LOPASS", "COMB LOPASS", " Hz", S::frequency, 0.5},
                            {"SPREAD", "COMB SPREAD", " %", S::bipolarPercent, 0.5}};

inline constexpr Page kVowel{{"VOWEL POS", "VOWEL POS", " %", S::percent, 0.0},
                             {"MODE", "VOWEL SET", "", S::vowelSet, 0.0},
                             {"SPREAD", "VOWEL SPREAD", " %", S::bipolarPercent, 0.5},
                             {"GAIN", "VOWEL GAIN", " dB", S::gain24Db, 0.0},
                             {"DIM", "VOWEL DIM", " %", S::percent, 0.0}};

inline constexpr Page kCompressor{{"THRESH", "COMP THRESHOLD", " dB", S::thresholdDb, 0.0},
                                  {"RATIO", "COMP RATIO", " : 1", S::ratio, 0.0},
                                  {"ATTACK", "COMP ATTACK", " ms", S::attackMs, 0.0},
                                  {"RELEASE", "COMP RELEASE", " ms", S::releaseMs, 0.0},
                                  {"GAIN", "COMP GAIN", " dB", S::gain24Db, 0.0}};

inline constexpr Page kFilterPair{{"FREQ HP", "FILTER FREQ", " HZ", S::frequency, 0.0},
                                  {"FREQ LP", "FILTER FREQ", " HZ", S::frequency, 0.7},
                                  {"GAIN", "GAIN", " %", S::percent, 0.0},
                                  {"MODE", "FILTER MODE", "", S::pairMode, 0.0},
                                  {"MIX", "FILTER MIX", " %", S::percent, 1.0}};

inline constexpr Page kVariablePair{{"FREQ HP", "HP FREQ", " HZ", S::frequency, 0.0},
                                    {"HP SLOPE", "HP SLOPE", "", S::sideSlope, 0.0},
                                    {"FREQ LP", "LP FREQ", " HZ", S::frequency, 0.7},
                                    {"LP SLOPE", "LP SLOPE", "", S::sideSlope, 0.0},
                                    {"MIX", "FILTER MIX", " %", S::percent, 1.0}};

}  // namespace orvantesco::effect_pages
