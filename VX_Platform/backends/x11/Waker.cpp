// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/Waker.h>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cmath>

namespace vx {

Waker::Waker() : m_Descriptor(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

Waker::~Waker() {
    close(m_Descriptor);
}

void Waker::wake() {
    eventfd_write(m_Descriptor, 1);
}

bool Waker::take() {
    eventfd_t count = 0;
    return eventfd_read(m_Descriptor, &count) == 0;
}

void Waker::wait(double seconds, int descriptor) const {
    pollfd wanted[] = {{m_Descriptor, POLLIN, 0}, {descriptor, POLLIN, 0}};
    poll(wanted, 2, static_cast<int>(std::ceil(seconds * 1000.0)));
}

} // namespace vx
