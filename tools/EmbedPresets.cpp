// Turns preset files into the source of the constants that the program carries.
// Usage: embed-presets OUTPUT.cpp ROOT FOLDER/NAME.txt...

#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr const char* head =
    "#include <array>\n\n#include \"presets/FactoryPresets.h\"\n\n"
    "namespace orvantesco {\nnamespace {\n\nusing namespace std::string_view_literals;\n\n"
    "constexpr std::array<FactoryPreset, ";

constexpr const char* tail =
    "}};\n\n}  // namespace\n\n"
    "std::span<const FactoryPreset> factoryPresets() noexcept { return presets; }\n\n"
    "}  // namespace orvantesco\n";

std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string content{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (!file.is_open() || file.bad()) throw std::runtime_error(path + ": cannot be read");
  return content;
}

/// Three octal digits, which no digit behind them can lengthen.
std::string escaped(char letter) {
  const auto byte = static_cast<unsigned char>(letter);
  std::string text = "\\";
  for (const int shift : {6, 3, 0}) text += static_cast<char>('0' + ((byte >> shift) & 7));
  return text;
}

/// A literal that holds a text to the byte, with a line for each of its lines.
std::string literal(std::string_view text) {
  std::string source = "\"";
  for (const char letter : text) {
    const bool isPlain =
        letter >= ' ' && letter <= '~' && letter != '"' && letter != '\\' && letter != '?';
    source += isPlain ? std::string(1, letter) : escaped(letter);
    if (letter == '\n') source += "\"sv\n\"";
  }
  return source + "\"sv";
}

std::string entry(const std::string& root, const std::string& file) {
  const std::size_t slash = file.find('/');
  const bool isPreset = slash != file.npos && file.rfind('/') == slash && file.ends_with(".txt");
  if (!isPreset) throw std::runtime_error(file + ": expected FOLDER/NAME.txt");
  const std::string name = file.substr(slash + 1, file.size() - slash - 1 - 4);
  return "    {" + literal(file.substr(0, slash)) + ", " + literal(name) + ",\n     " +
         literal(contentOf(root + "/" + file)) + "},\n";
}

std::string sourceOf(const std::string& root, const std::vector<std::string>& files) {
  std::string source = head + std::to_string(files.size()) + "> presets{{\n";
  for (const std::string& file : files) source += entry(root, file);
  return source + tail;
}

void write(const std::string& path, const std::string& source) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << source;
  if (!file.flush()) throw std::runtime_error(path + ": cannot be written");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fputs("embed-presets: expected OUTPUT.cpp ROOT FOLDER/NAME.txt...\n", stderr);
    return 2;
  }
  try {
    write(argv[1], sourceOf(argv[2], {argv + 3, argv + argc}));
    return 0;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "embed-presets: %s\n", fault.what());
    return 1;
  }
}
