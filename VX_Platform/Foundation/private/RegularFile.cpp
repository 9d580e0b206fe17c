// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/private/RegularFile.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>

vx::FileHandle vx::openRegularFile(const char* path, std::uint64_t& size, std::string& why) {
    // A pipe that nobody writes to would hold the caller.
    const int descriptor = path ? open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK) : -1;
    struct stat status {};
    if (descriptor < 0 || fstat(descriptor, &status) != 0)
        why = path ? std::strerror(errno) : "there is no path";
    else if (S_ISDIR(status.st_mode))
        why = "it is a directory";
    else if (!S_ISREG(status.st_mode))
        why = "it is no regular file";
    else if (FileHandle file{fdopen(descriptor, "rb")}) {
        size = static_cast<std::uint64_t>(status.st_size);
        return file;
    } else
        why = std::strerror(errno);
    if (descriptor >= 0)
        close(descriptor);
    return nullptr;
}
