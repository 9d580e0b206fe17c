// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/private/GeometryDialect.h>

#include <VX_OpenGL64/shaders/private/GLSLTokens.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iterator>
#include <set>
#include <utility>

namespace {

using vx::GeometryLayout;
using vx::GLSLToken;

/// A primitive type as a layout names it.
struct Primitive {
    int type;
    const char* name;
    int vertices;
};

constexpr Primitive Inputs[] = {{GL_POINTS, "points", 1},
                                {GL_LINES, "lines", 2},
                                {GL_LINES_ADJACENCY, "lines_adjacency", 4},
                                {GL_TRIANGLES, "triangles", 3},
                                {GL_TRIANGLES_ADJACENCY, "triangles_adjacency", 6}};
constexpr Primitive Outputs[] = {
    {GL_POINTS, "points", 0}, {GL_LINE_STRIP, "line_strip", 0}, {GL_TRIANGLE_STRIP, "triangle_strip", 0}};

template <std::size_t Count>
const Primitive* findPrimitive(const Primitive (&table)[Count], int type) {
    const auto* const found =
        std::find_if(table, table + Count, [&](const Primitive& each) { return each.type == type; });
    return found == table + Count ? nullptr : found;
}

/// What the dialect has of each input vertex, and its type; "gl_PositionIn" stands for `gl_in[].gl_Position`.
struct DialectInput {
    std::string_view name;
    const char* type;
};

constexpr DialectInput DialectInputs[] = {
    {"gl_PositionIn", "vec4"},      {"gl_PointSizeIn", "float"},        {"gl_ClipVertexIn", "vec4"},
    {"gl_FrontColorIn", "vec4"},    {"gl_BackColorIn", "vec4"},         {"gl_FrontSecondaryColorIn", "vec4"},
    {"gl_FogFragCoordIn", "float"}, {"gl_BackSecondaryColorIn", "vec4"}};
constexpr std::string_view TexCoordInput = "gl_TexCoordIn";
constexpr int TexCoords = 8;

bool isDialectInput(std::string_view word) {
    return word == TexCoordInput || std::any_of(std::begin(DialectInputs), std::end(DialectInputs),
                                                [&](const DialectInput& each) { return each.name == word; });
}

/// The extension, or the one of the same words that it became.
bool isGeometryExtension(std::string_view word) {
    return word == "GL_EXT_geometry_shader4" || word == "GL_ARB_geometry_shader4";
}

bool isDialectConstant(std::string_view word) {
    return word == "gl_VerticesIn" || word == "gl_MaxVertexVaryingComponents";
}

/// The name under which the adapted text declares a word of the dialect: as long, so that columns stay.
std::string ownName(std::string_view word) {
    return (word.starts_with("GL_") ? "VX_" : "vx_") + std::string(word.substr(3));
}

/// A change of the text: `length` bytes at `place`.
struct Edit {
    enum Kind { Blank, Rename, Version, Size };

    Kind kind;
    std::size_t place;
    std::size_t length;
};

struct ExtensionLine {
    int line;
    std::string text;
};

/// What a geometry shader's text is made of.
struct Reading {
    std::string_view text;
    int version = 110;
    std::string versionLine;
    bool hasLayout = false;
    std::vector<ExtensionLine> extensions;
    std::vector<Edit> edits;           // in their order in the text
    std::vector<Edit> headEdits;       // those of the lines that move ahead, for a text that is no dialect
    std::set<std::string_view> inputs; // those of the dialect that are used
};

/// Reads a text once, from its begin to its end. Conditions and macros are not worked out.
class TextReader {
public:
    explicit TextReader(std::string_view text) : m_Tokens(text) { m_Reading.text = text; }
    Reading read();

private:
    void readToken(const GLSLToken& token);
    void readWord(const GLSLToken& token);
    void readSign(const GLSLToken& token);
    void readDirective(const GLSLToken& hash);
    void readVersion(const GLSLToken& hash);
    void readExtension(const GLSLToken& hash);
    void endDirective(const GLSLToken& end);
    void endStatement(std::size_t next);
    GLSLToken readLine(std::string& line, std::vector<GLSLToken>& words);
    void skipLine();
    void blankLine(const GLSLToken& hash, const GLSLToken& end);
    std::size_t placeOf(const GLSLToken& token) const {
        return std::size_t(token.text.data() - m_Reading.text.data());
    }
    void edit(Edit::Kind kind, const GLSLToken& token) {
        m_Reading.edits.push_back({kind, placeOf(token), token.text.size()});
    }

    vx::GLSLTokens m_Tokens;
    Reading m_Reading;
    GLSLToken m_Former{};
    int m_Depth = 0; // of conditions
    bool m_HasCode = false;
    bool m_IsDirective = false;
    bool m_IsInput = false;         // in a declaration that begins with "in"
    bool m_IsRedeclaration = false; // of what the adapted text declares itself
    std::size_t m_StatementPlace = 0;
    std::size_t m_StatementEdits = 0; // number of edits ahead of the statement
};

Reading TextReader::read() {
    for (GLSLToken token = m_Tokens.next(); token.kind != GLSLToken::End; token = m_Tokens.next()) {
        if (token.isHash())
            readDirective(token);
        else if (token.kind != GLSLToken::LineEnd)
            readToken(token);
        else if (m_IsDirective)
            endDirective(token);
    }
    return std::move(m_Reading);
}

void TextReader::endDirective(const GLSLToken& end) {
    if (m_Former.is("varying")) // "#define VARYING varying", with "in" or "out" behind its name elsewhere
        edit(Edit::Blank, m_Former);
    endStatement(placeOf(end));
    m_IsDirective = false;
}

void TextReader::readToken(const GLSLToken& token) {
    m_HasCode = m_HasCode || !m_IsDirective;
    if (token.kind == GLSLToken::Word)
        readWord(token);
    else
        readSign(token);
    m_Former = token;
}

void TextReader::readWord(const GLSLToken& token) {
    const bool isInput = token.is("in");
    if ((isInput || token.is("out")) && m_Former.is("varying"))
        edit(Edit::Blank, m_Former);
    m_IsInput = m_IsInput || isInput;
    m_Reading.hasLayout = m_Reading.hasLayout || token.is("layout");
    if (isDialectInput(token.text)) {
        m_Reading.inputs.insert(token.text);
        m_IsRedeclaration = m_IsRedeclaration || (m_IsInput && !m_IsDirective);
        edit(Edit::Rename, token);
    } else if (isDialectConstant(token.text) || isGeometryExtension(token.text)) {
        edit(Edit::Rename, token);
    } else if (token.is("__VERSION__")) {
        edit(Edit::Version, token);
    }
}

void TextReader::readSign(const GLSLToken& token) {
    if (token.is("]") && m_Former.is("[") && m_IsInput)
        m_Reading.edits.push_back({Edit::Size, placeOf(token), 0});
    if (token.is(";") || token.is("{") || token.is("}") || token.is("(") || token.is(")"))
        endStatement(placeOf(token) + 1);
}

void TextReader::endStatement(std::size_t next) {
    if (m_IsRedeclaration) {
        m_Reading.edits.resize(m_StatementEdits);
        m_Reading.edits.push_back({Edit::Blank, m_StatementPlace, next - m_StatementPlace});
    }
    m_IsInput = m_IsRedeclaration = false;
    m_Former = {};
    m_StatementPlace = next;
    m_StatementEdits = m_Reading.edits.size();
}

void TextReader::readDirective(const GLSLToken& hash) {
    const GLSLToken name = m_Tokens.next();
    m_IsRedeclaration = false; // a condition within a declaration
    endStatement(placeOf(hash));
    if (name.is("version") && !m_HasCode && m_Reading.versionLine.empty())
        readVersion(hash);
    else if (name.is("extension"))
        readExtension(hash);
    else if (name.is("define") || name.is("undef") || name.is("if") || name.is("ifdef") ||
             name.is("ifndef") || name.is("elif"))
        m_IsDirective = true; // and read on, as in a statement
    else if (!name.endsLine())
        skipLine();
    if (name.is("if") || name.is("ifdef") || name.is("ifndef"))
        ++m_Depth;
    else if (name.is("endif"))
        m_Depth = std::max(m_Depth - 1, 0);
}

/// The tokens up to the line's end, which is returned, and behind `line`, with blanks between them.
GLSLToken TextReader::readLine(std::string& line, std::vector<GLSLToken>& words) {
    GLSLToken token = m_Tokens.next();
    for (; !token.endsLine(); token = m_Tokens.next()) {
        line += " " + std::string(token.text);
        words.push_back(token);
    }
    return token;
}

void TextReader::skipLine() {
    std::string line;
    std::vector<GLSLToken> words;
    readLine(line, words);
    const auto isLayout = [](const GLSLToken& word) { return word.is("layout"); };
    m_Reading.hasLayout = m_Reading.hasLayout || std::any_of(words.begin(), words.end(), isLayout);
}

void TextReader::blankLine(const GLSLToken& hash, const GLSLToken& end) {
    const Edit blank{Edit::Blank, placeOf(hash), placeOf(end) - placeOf(hash)};
    m_Reading.edits.push_back(blank);
    m_Reading.headEdits.push_back(blank);
    endStatement(placeOf(end));
}

void TextReader::readVersion(const GLSLToken& hash) {
    std::string line = "#version";
    std::vector<GLSLToken> words;
    const GLSLToken end = readLine(line, words);
    const std::string_view number = words.empty() ? std::string_view() : words[0].text;
    int version = 0;
    const auto [last, error] = std::from_chars(number.data(), number.data() + number.size(), version);
    if (number.empty() || last != number.data() + number.size() || error != std::errc())
        return; // the driver will find it at its place
    m_Reading.version = version;
    m_Reading.versionLine = line;
    blankLine(hash, end);
}

/// Extension lines move ahead of the declarations, as GLSL wants it, and out of conditions: there `enable`
/// does no harm.
void TextReader::readExtension(const GLSLToken& hash) {
    std::string line = "#extension";
    std::vector<GLSLToken> words;
    const GLSLToken end = readLine(line, words);
    const bool isConditional = m_Depth > 0 && words.size() == 3;
    if (isConditional && words[2].is("require"))
        line.replace(line.size() - words[2].text.size(), std::string::npos, "enable");
    const bool isOwn = !words.empty() && isGeometryExtension(words[0].text);
    if (!isOwn && !(isConditional && words[2].is("disable")))
        m_Reading.extensions.push_back({hash.line, line});
    blankLine(hash, end);
}

/// The text with its edits; what is open in size gets that of the input.
std::string edited(const Reading& reading, const std::vector<Edit>& edits, int vertices) {
    std::string text;
    std::size_t done = 0;
    for (const Edit& each : edits) {
        text += reading.text.substr(done, each.place - done);
        done = each.place + each.length;
        const std::string_view former = reading.text.substr(each.place, each.length);
        if (each.kind == Edit::Rename)
            text += ownName(former);
        else if (each.kind == Edit::Size)
            text += std::to_string(vertices);
        else if (each.kind == Edit::Version)
            text += std::to_string(reading.version);
        else
            std::replace_copy_if(
                former.begin(), former.end(), std::back_inserter(text),
                [](char c) { return c != '\n' && c != '\r'; }, ' ');
    }
    text += reading.text.substr(done);
    return text;
}

/// `item(0), item(1), ...`
template <class Item>
std::string listed(int count, Item item) {
    std::string list;
    for (int i = 0; i < count; ++i)
        list += (i ? ", " : "") + item(i);
    return list;
}

std::string subscript(int index) {
    return "[" + std::to_string(index) + "]";
}

/// An input of the dialect as an array of its own, so that it also works in macros and as an argument.
/// Without `isFilled` it can be compiled alone.
std::string declarationOf(const DialectInput& input, int vertices, bool isFilled) {
    const std::string array = input.type + subscript(vertices),
                      member = std::string(input.name.substr(0, input.name.size() - 2));
    const auto item = [&](int i) { return "gl_in" + subscript(i) + "." + member; };
    return input.type + (" " + ownName(input.name)) + subscript(vertices) +
           (isFilled ? " = " + array + "(" + listed(vertices, item) + ")" : "") + ";\n";
}

/// GLSL 1.50 has no arrays of arrays; where they are missing, a matrix stands in for four coordinates.
std::string texCoordDeclaration(int vertices, bool isFilled) {
    const auto declared = [&](const std::string& row, const std::string& type, const std::string& name,
                              int count) {
        const auto item = [&](int i) {
            return row + "(" +
                   listed(count,
                          [&](int j) { return "gl_in" + subscript(i) + ".gl_TexCoord" + subscript(j); }) +
                   ")";
        };
        return name + (isFilled ? " = " + type + "(" + listed(vertices, item) + ")" : "") + ";\n";
    };
    const std::string name = " " + ownName(TexCoordInput) + subscript(vertices), sets = subscript(TexCoords);
    return "#ifdef GL_ARB_arrays_of_arrays\n" +
           declared("vec4" + sets, "vec4" + subscript(vertices) + sets, "vec4" + name + sets, TexCoords) +
           "#else\n" + declared("mat4", "mat4" + subscript(vertices), "mat4" + name, 4) + "#endif\n";
}

std::string declarations(const Reading& reading, int vertices, bool isFilled) {
    std::string text = "const int vx_VerticesIn = " + std::to_string(vertices) + ";\n" +
                       "const int vx_MaxVertexVaryingComponents = gl_MaxVertexOutputComponents;\n" +
                       "#define VX_EXT_geometry_shader4 1\n#define VX_ARB_geometry_shader4 1\n";
    for (const DialectInput& each : DialectInputs) {
        if (reading.inputs.count(each.name))
            text += declarationOf(each, vertices, isFilled);
    }
    return reading.inputs.count(TexCoordInput) ? text + texCoordDeclaration(vertices, isFilled) : text;
}

std::string lineDirective(int version, int line) {
    // Before 3.30 it says the number of the line that it stands on.
    return "#line " + std::to_string(version < 330 ? line - 1 : line) + "\n";
}

bool isDialect(const Reading& reading) {
    return reading.version < 150;
}

/// What stands ahead of the host's lines. Without a layout it is a draft's.
std::string prologue(const Reading& reading, int version, int vertices, const GeometryLayout* layout) {
    std::string text =
        isDialect(reading) ? "#version " + std::to_string(version) + " compatibility" : reading.versionLine;
    text += "\n";
    for (const ExtensionLine& each : reading.extensions)
        text += lineDirective(version, each.line) + each.text + "\n";
    if (isDialect(reading))
        text += "#ifdef GL_ARB_arrays_of_arrays\n#extension GL_ARB_arrays_of_arrays : enable\n#endif\n";
    if (layout)
        text += "layout(" + std::string(findPrimitive(Inputs, layout->inputType)->name) + ") in;\nlayout(" +
                findPrimitive(Outputs, layout->outputType)->name +
                ", max_vertices = " + std::to_string(layout->verticesOut) + ") out;\n";
    if (isDialect(reading))
        text += declarations(reading, vertices, layout != nullptr);
    return text + lineDirective(version, 1);
}

std::string adapted(const Reading& reading, int version, int vertices, const GeometryLayout* layout) {
    return prologue(reading, isDialect(reading) ? version : reading.version, vertices, layout) +
           edited(reading, isDialect(reading) ? reading.edits : reading.headEdits, vertices);
}

std::string hexadecimal(int value) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "0x%X", unsigned(value));
    return digits;
}

} // namespace

bool vx::hasOwnLayout(std::string_view text) {
    return TextReader(text).read().hasLayout;
}

std::string vx::layoutFault(const GeometryLayout& layout) {
    if (!findPrimitive(Inputs, layout.inputType))
        return "a geometry shader has no input of the primitive type " + hexadecimal(layout.inputType);
    if (!findPrimitive(Outputs, layout.outputType))
        return "a geometry shader has no output of the primitive type " + hexadecimal(layout.outputType);
    if (layout.verticesOut < 1)
        return "a geometry shader emits at least 1 vertex, not " + std::to_string(layout.verticesOut);
    return {};
}

std::string vx::adaptGeometryShader(std::string_view text, const GeometryLayout& layout, int version) {
    const Reading reading = TextReader(text).read();
    if (reading.hasLayout)
        return std::string(text);
    return adapted(reading, version, findPrimitive(Inputs, layout.inputType)->vertices, &layout);
}

std::vector<std::string> vx::geometryShaderDrafts(std::string_view text, int version) {
    const Reading reading = TextReader(text).read();
    std::vector<std::string> drafts;
    if (reading.hasLayout || !isDialect(reading))
        drafts.emplace_back(text);
    if (reading.hasLayout)
        return drafts;
    // More vertices than any input has: an index behind its end is for the link to find. The others are for
    // arrays that the text gives the size of one input, or no size.
    constexpr int Any = 32;
    if (isDialect(reading))
        drafts.push_back(adapted(reading, version, Any, nullptr));
    for (const int type : {GL_TRIANGLES, GL_TRIANGLES_ADJACENCY, GL_LINES_ADJACENCY, GL_LINES, GL_POINTS}) {
        const GeometryLayout layout{type, GL_TRIANGLE_STRIP, 1};
        const int vertices = findPrimitive(Inputs, type)->vertices;
        drafts.push_back(adapted(reading, version, vertices, &layout));
    }
    return drafts;
}
