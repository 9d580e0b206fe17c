// SPDX-License-Identifier: MIT
#include <VX_Platform/drawing/FontMap.h>

#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <iterator>

#include <strings.h>

namespace vx {

namespace {

constexpr int kBlack = 900;

struct StandIn {
    const char* family;
    const char* standIn;
    int weight;
};

// Families that programs name and that Linux seldom has, with what comes nearest, the best first.
constexpr StandIn kStandIns[] = {
    {"Arial Black", "Archivo Black", 400},   {"Arial Black", "Roboto", kBlack},
    {"Arial Black", "Noto Sans", kBlack},    {"Arial Black", "Open Sans", kBlack},
    {"Arial Black", "Liberation Sans", 700}, {"Arial Black", "DejaVu Sans", 700},
    {"Arial Black", "Sans", kBlack},
};

bool equalNames(const std::string& a, const char* b) {
    return strcasecmp(a.c_str(), b) == 0;
}

// Names that fontconfig always serves without a family of that name.
bool isGeneric(const std::string& family) {
    const char* names[] = {"sans", "sans-serif", "serif", "monospace"};
    return std::any_of(std::begin(names), std::end(names),
                       [&](const char* name) { return equalNames(family, name); });
}

} // namespace

FontMap& FontMap::current() {
    thread_local FontMap map;
    return map;
}

FontMap::FontMap() {
    PangoFontMap* map = pango_cairo_font_map_new();
    m_Context.reset(pango_font_map_create_context(map));
    g_object_unref(map); // the context holds it
}

void FontMap::ContextDeleter::operator()(PangoContext* context) const {
    g_object_unref(context);
}

const FontFace& FontMap::face(const std::string& family) {
    constexpr std::size_t kRemembered = 64;
    const auto known = m_Faces.find(family);
    if (known != m_Faces.end())
        return known->second;
    if (m_Faces.size() >= kRemembered)
        m_Faces.clear();
    return m_Faces[family] = resolve(family, FontFace::kRegular);
}

bool FontMap::hasFamily(const std::string& family) {
    if (isGeneric(family))
        return true;
    FcPattern* pattern = FcPatternCreate();
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcObjectSet* wanted = FcObjectSetBuild(FC_FAMILY, nullptr);
    FcFontSet* found = FcFontList(nullptr, pattern, wanted);
    const bool has = found && found->nfont > 0;
    if (found)
        FcFontSetDestroy(found);
    FcObjectSetDestroy(wanted);
    FcPatternDestroy(pattern);
    return has;
}

FontFace FontMap::resolve(const std::string& family, int weight) {
    if (hasFamily(family))
        return {family, weight};
    for (const StandIn& row : kStandIns)
        if (equalNames(family, row.family) && hasFamily(row.standIn))
            return {row.standIn, row.weight};
    return {"", weight};
}

std::string FontMap::fileOf(const FontFace& face) {
    FcPattern* pattern = FcPatternCreate();
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(face.family.c_str()));
    FcPatternAddInteger(pattern, FC_WEIGHT, FcWeightFromOpenType(face.weight));
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result = FcResultNoMatch;
    FcPattern* found = FcFontMatch(nullptr, pattern, &result);
    FcChar8* path = nullptr;
    std::string file;
    if (found && FcPatternGetString(found, FC_FILE, 0, &path) == FcResultMatch)
        file = reinterpret_cast<const char*>(path);
    if (found)
        FcPatternDestroy(found);
    FcPatternDestroy(pattern);
    return file;
}

} // namespace vx
