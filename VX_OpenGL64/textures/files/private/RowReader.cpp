// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/private/RowReader.h>

#include <VX_OpenGL64/textures/files/private/PixelRows.h>

vx::RowReader::RowReader(PictureReader& picture)
    : m_Picture(picture), m_Row((picture.info().rowBytes() + 1) / 2) {
    if (picture.info().bitsPerChannel == 16)
        m_Narrow.resize(m_Row.size());
}

const unsigned char* vx::RowReader::next() {
    if (!m_Picture.readRow(m_Row.data()))
        return nullptr;
    if (m_Narrow.empty())
        return reinterpret_cast<const unsigned char*>(m_Row.data());
    pixels::narrow(m_Row.data(), m_Narrow.data(), m_Narrow.size());
    return m_Narrow.data();
}
