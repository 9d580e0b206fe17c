// SPDX-License-Identifier: MIT
#pragma once

namespace vx {

/// While it lives, pixels come from GL in rows without gaps, into our own memory, whatever the host has set;
/// at its end all is as before. Needs a current context. GL: glPushClientAttrib, glPixelStorei,
/// glBindBuffer, glPopClientAttrib.
class PlainPacking {
public:
    PlainPacking();
    ~PlainPacking();
    PlainPacking(const PlainPacking&) = delete;
    PlainPacking& operator=(const PlainPacking&) = delete;

private:
    int m_Buffer = 0;
};

} // namespace vx
