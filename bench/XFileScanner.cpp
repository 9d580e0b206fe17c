// SPDX-License-Identifier: MIT
#include <bench/XFileScanner.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

class BlockScanner {
public:
    explicit BlockScanner(const std::string& path) {
        FILE* file = std::fopen(path.c_str(), "rb");
        std::fseek(file, 0, SEEK_END);
        m_Size = static_cast<std::size_t>(std::ftell(file));
        std::rewind(file);
        m_Text.reset(new char[m_Size + 1]);
        m_Size = std::fread(m_Text.get(), 1, m_Size, file);
        m_Text[m_Size] = '\0';
        std::fclose(file);
        m_At = m_Text.get();
    }

    void goBehind(const char* word) { m_At = std::strchr(std::strstr(m_At, word), '{') + 1; }

    template <class Number>
    Number next() {
        while (*m_At != '-' && (*m_At < '0' || *m_At > '9'))
            ++m_At;
        Number value{};
        m_At = std::from_chars(m_At, m_Text.get() + m_Size, value).ptr;
        return value;
    }

private:
    std::unique_ptr<char[]> m_Text;
    std::size_t m_Size = 0;
    const char* m_At;
};

class CharacterScanner {
public:
    explicit CharacterScanner(const std::string& path) : m_File(std::fopen(path.c_str(), "r"), std::fclose) {}

    void goBehind(const char* word) {
        std::string seen;
        while (seen != word) {
            seen.clear();
            int c = getc(m_File.get());
            for (; c > ' ' && c != '{'; c = getc(m_File.get()))
                seen += static_cast<char>(c);
            if (seen == word)
                while (c != '{')
                    c = getc(m_File.get());
        }
    }

    template <class Number>
    Number next() {
        m_Token.clear();
        for (int c = getc(m_File.get()); c != ';' && c != ','; c = getc(m_File.get()))
            m_Token += static_cast<char>(c);
        if (m_Token.empty() || m_Token == "\n")
            return next<Number>();
        if constexpr (std::is_same_v<Number, int>)
            return static_cast<int>(std::strtol(m_Token.c_str(), nullptr, 10));
        else
            return static_cast<Number>(std::strtod(m_Token.c_str(), nullptr));
    }

private:
    std::unique_ptr<FILE, int (*)(FILE*)> m_File;
    std::string m_Token;
};

template <class Scanner>
class Reader {
public:
    explicit Reader(const std::string& path) : m_Scanner(path) {}

    XFileArrays read() {
        XFileArrays arrays;
        m_Scanner.goBehind("Mesh");
        readFloats(arrays.positions, 3);
        readFaces(arrays.faces);
        m_Scanner.goBehind("MeshNormals");
        readFloats(arrays.normals, 3);
        readFaces(arrays.normalFaces);
        m_Scanner.goBehind("MeshTextureCoords");
        readFloats(arrays.uvs, 2);
        return arrays;
    }

private:
    void readFloats(std::vector<float>& out, int each) {
        const int count = m_Scanner.template next<int>() * each;
        out.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            out.push_back(m_Scanner.template next<float>());
    }

    void readFaces(std::vector<int>& out) {
        const int count = m_Scanner.template next<int>();
        out.reserve(static_cast<std::size_t>(count) * 3);
        for (int i = 0; i < count; ++i) {
            m_Scanner.template next<int>();
            for (int corner = 0; corner < 3; ++corner)
                out.push_back(m_Scanner.template next<int>());
        }
    }

    Scanner m_Scanner;
};

} // namespace

XFileArrays scanXFile(const std::string& path) {
    return Reader<BlockScanner>(path).read();
}

XFileArrays scanXFileByGetc(const std::string& path) {
    return Reader<CharacterScanner>(path).read();
}
