// The preset library: looking through its folders, building its menu, and a step in its order.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <map>

#include "presets/PresetCatalogue.h"
#include "presets/PresetMenu.h"
#include "presets/PresetScan.h"
#include "support/PresetTree.h"

namespace orvantesco {
namespace {

constexpr int kFilesInFolder = 50;

/// So many presets, fifty a folder, ten folders in each of their parents.
void fill(PresetTree& tree, int files) {
  for (int file = 0; file < files; ++file) {
    const int folder = file / kFilesInFolder;
    tree.addFile("/User Presets/Parent " + std::to_string(folder / 10) + "/Folder " +
                 std::to_string(folder) + "/Preset " + std::to_string(file) + ".txt");
  }
}

/// The files are made once, since some disks take longer for that than for everything else.
const PresetTree& treeOf(benchmark::State& state) {
  static std::map<int, PresetTree> trees;
  const int files = static_cast<int>(state.range(0));
  const auto [place, isNew] = trees.try_emplace(files);
  if (isNew) fill(place->second, files);
  return place->second;
}

void scanOfPresets(benchmark::State& state) {
  const PresetTree& tree = treeOf(state);
  std::size_t found = 0;
  for (auto _ : state) found = scanPresets(tree.root()).presetOrder.size();
  state.counters["presets"] = static_cast<double>(found);
}

/// What the disk itself costs: the scan is to be read against this one.
void plainWalkOfFolders(benchmark::State& state) {
  namespace fs = std::filesystem;
  const PresetTree& tree = treeOf(state);
  std::size_t files = 0;
  for (auto _ : state) {
    files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(tree.root())) {
      files += entry.is_regular_file() ? 1 : 0;
    }
  }
  state.counters["files"] = static_cast<double>(files);
}

void menuOfPresets(benchmark::State& state) {
  const PresetCatalogue catalogue = scanPresets(treeOf(state).root());
  PresetMenu menu;
  for (auto _ : state) menu.build(catalogue);
  state.counters["menus"] = static_cast<double>(menu.nodes().size());
}

void stepFromTheLastPreset(benchmark::State& state) {
  const PresetCatalogue catalogue = scanPresets(treeOf(state).root());
  const std::string last = catalogue.presetOrder.back().relativePath;
  for (auto _ : state) {
    benchmark::DoNotOptimize(stepFrom(catalogue.presetOrder, last, true));
  }
}

BENCHMARK(scanOfPresets)->Arg(200)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(plainWalkOfFolders)->Arg(200)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(menuOfPresets)->Arg(200)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(stepFromTheLastPreset)->Arg(20000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace orvantesco
