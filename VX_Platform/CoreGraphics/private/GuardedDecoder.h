// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/private/PictureDecoder.h>

#include <csetjmp>

namespace vx {

/// For decoders over C libraries that leave by a jump where they give up.
class GuardedDecoder : public PictureDecoder {
public:
    using PictureDecoder::PictureDecoder;

protected:
    /// Does the work, which owns nothing; false where it was given up.
    template <typename Work>
    bool guarded(Work work) {
        if (setjmp(m_GivenUp))
            return false;
        work();
        return true;
    }
    /// Leaves the guarded work; `failure()` has the reason.
    [[noreturn]] void giveUp() { std::longjmp(m_GivenUp, 1); }

private:
    std::jmp_buf m_GivenUp;
};

} // namespace vx
