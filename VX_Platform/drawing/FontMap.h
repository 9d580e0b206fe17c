// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <string>

typedef struct _PangoContext PangoContext;

namespace vx {

/// A family that fontconfig has, or one of its generic names ("Sans"), and a weight from 1 to 1000: 400 is
/// regular, 700 bold.
struct FontFace {
    static constexpr int kRegular = 400;

    std::string family;
    int weight = kRegular;
};

/// The fonts as one thread sees them; a thread's map is made once and lives as long as the thread, as making
/// one costs far more than laying a text out.
class FontMap {
public:
    /// The calling thread's map, for that thread alone.
    static FontMap& current();

    FontMap(const FontMap&) = delete;
    FontMap& operator=(const FontMap&) = delete;

    /// Whether fontconfig has fonts of that family, whatever the case of its letters.
    static bool hasFamily(const std::string& family);
    /// The face that serves a family's name: the family itself, else the first installed one that stands in
    /// for it, with the weight that this takes. An empty family when there is none.
    static FontFace resolve(const std::string& family, int weight);
    /// The same, remembered by this map: asking fontconfig takes longer than drawing a line of text.
    const FontFace& face(const std::string& family);
    /// The path of the file that fontconfig takes for a face; empty where it has none.
    static std::string fileOf(const FontFace& face);

    /// What layouts are made in; borrowed.
    PangoContext* context() const { return m_Context.get(); }

private:
    FontMap();

    struct ContextDeleter {
        void operator()(PangoContext* context) const;
    };
    std::unique_ptr<PangoContext, ContextDeleter> m_Context;
    std::map<std::string, FontFace> m_Faces;
};

} // namespace vx
