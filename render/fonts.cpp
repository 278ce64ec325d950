#include "render/fonts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fontconfig/fontconfig.h>
#include <fstream>
#include <memory>
#include <sstream>
#include <string_view>
#include <vector>
#include <vtkNew.h>
#include <vtkPath.h>
#include <vtkTextProperty.h>
#include <vtkTextRenderer.h>

#include "render/text.h"

namespace render {
namespace {

struct Character {
  char32_t code = 0;
  std::string bytes;
};

// Without blanks and control characters.
std::vector<Character> visible_characters(const std::string& text) {
  constexpr std::array<char32_t, 2> kWideBlanks = {0x00A0, 0x3000};
  std::vector<Character> characters;
  for (std::size_t at = 0; at < text.size();) {
    FcChar32 code = 0;
    const int length = FcUtf8ToUcs4(reinterpret_cast<const FcChar8*>(text.data() + at), &code,
                                    static_cast<int>(text.size() - at));
    if (length <= 0) break;
    if (code > ' ' && std::find(kWideBlanks.begin(), kWideBlanks.end(), code) == kWideBlanks.end())
      characters.push_back({code, text.substr(at, static_cast<std::size_t>(length))});
    at += static_cast<std::size_t>(length);
  }
  return characters;
}

// The coordinates of a character's outline.
std::string outline_of(const std::string& character, vtkTextProperty* property) {
  constexpr int kDotsPerInch = 72;
  vtkNew<vtkPath> path;
  vtkTextRenderer::GetInstance()->StringToPath(property, character, path, kDotsPerInch);
  std::ostringstream text;
  std::array<double, 3> point{};
  for (vtkIdType i = 0; i < path->GetNumberOfPoints(); ++i) {
    path->GetPoint(i, point.data());
    text << point[0] << ' ' << point[1] << ' ';
  }
  return text.str();
}

template <auto destroy>
struct Destroy {
  template <typename Object>
  void operator()(Object* object) const {
    destroy(object);
  }
};
using CharacterSet = std::unique_ptr<FcCharSet, Destroy<FcCharSetDestroy>>;
using Pattern = std::unique_ptr<FcPattern, Destroy<FcPatternDestroy>>;
using FontSet = std::unique_ptr<FcFontSet, Destroy<FcFontSetDestroy>>;

// Installed fonts that VTK can read, those that suit the characters best first.
FontSet suitable_fonts(const FcCharSet* characters) {
  const Pattern pattern(FcPatternCreate());
  FcPatternAddCharSet(pattern.get(), FC_CHARSET, characters);
  FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>("sans-serif"));
  // Of the glyphs that Chinese and Japanese share, the Japanese ones: labels of FLD files are Shift_JIS.
  FcPatternAddString(pattern.get(), FC_LANG, reinterpret_cast<const FcChar8*>("ja"));
  FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
  FcPatternAddBool(pattern.get(), FC_COLOR, FcFalse);
  FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
  FcDefaultSubstitute(pattern.get());
  FcResult result{};
  return FontSet(FcFontSort(nullptr, pattern.get(), FcFalse, nullptr, &result));
}

// The file of a font whose first face, the one that VTK takes, is this one; else empty.
std::string file_of(FcPattern* font) {
  FcChar8* file = nullptr;
  int face = -1;
  if (FcPatternGetString(font, FC_FILE, 0, &file) != FcResultMatch ||
      FcPatternGetInteger(font, FC_INDEX, 0, &face) != FcResultMatch || face != 0)
    return {};
  std::string path = reinterpret_cast<const char*>(file);
  return is_font_file(path) ? path : std::string();
}

}  // namespace

std::set<char32_t> missing_characters(const std::string& text, const std::string& font) {
  constexpr char kNoCharacter[] = "\xef\xbf\xbf";  // U+FFFF, which no font has
  constexpr double kSize = 32;
  vtkNew<vtkTextProperty> property;
  set_text(property, {font, {}}, kSize);
  const std::string replacement = outline_of(kNoCharacter, property);
  std::set<char32_t> missing;
  for (const Character& character : visible_characters(text)) {
    if (outline_of(character.bytes, property) == replacement) missing.insert(character.code);
  }
  return missing;
}

std::string font_for(const std::string& text) {
  std::size_t fewest = missing_characters(text, {}).size();
  if (fewest == 0) return {};
  const CharacterSet characters(FcCharSetCreate());
  for (const Character& character : visible_characters(text))
    FcCharSetAddChar(characters.get(), character.code);
  const FontSet fonts = suitable_fonts(characters.get());
  std::string best;
  for (int i = 0; fonts && i < fonts->nfont && fewest > 0; ++i) {
    FcCharSet* available = nullptr;
    if (FcPatternGetCharSet(fonts->fonts[i], FC_CHARSET, 0, &available) != FcResultMatch) continue;
    const std::size_t missing = FcCharSetSubtractCount(characters.get(), available);
    if (missing >= fewest) continue;
    const std::string file = file_of(fonts->fonts[i]);
    if (file.empty()) continue;
    best = file;
    fewest = missing;
  }
  return best;
}

bool is_font_file(const std::string& path) {
  std::array<char, 4> start{};
  std::ifstream(path, std::ios::binary).read(start.data(), start.size());
  const std::string_view found(start.data(), start.size());
  constexpr std::array<std::string_view, 4> kStarts = {std::string_view("\0\1\0\0", 4), "OTTO", "ttcf",
                                                       "true"};
  return std::find(kStarts.begin(), kStarts.end(), found) != kStarts.end();
}

}  // namespace render
