// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/output/private/FrameSink.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/private/Clock.h>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

extern char** environ;

namespace vx {

namespace {

// What a program may take to go on reading, and to end once it has everything.
constexpr int kPatience = 10 * 1000;
constexpr std::uint64_t kLongestEnd = 30 * Clock::kSecond;
constexpr std::uint64_t kGlance = Clock::kSecond / 100;
// As much as anyone may have: a frame in a few turns.
constexpr int kPipe = 1 << 20;

class ProgramSink : public FrameSink {
public:
    ProgramSink(int input, pid_t program, int width, int height)
        : m_Input(input), m_Program(program), m_Row(std::size_t(width) * 4), m_Rows(std::size_t(height)) {
        m_Frame.resize(m_Row * m_Rows);
    }
    ~ProgramSink() override { end(); }

    bool write(const std::uint8_t* pixels) override {
        for (std::size_t row = 0; row < m_Rows; ++row)
            std::memcpy(&m_Frame[row * m_Row], pixels + (m_Rows - 1 - row) * m_Row, m_Row);
        const std::uint8_t* rest = m_Frame.data();
        for (std::size_t left = m_Frame.size(); m_Input >= 0 && left > 0;) {
            const ssize_t taken = take(rest, left);
            if (taken < 0)
                giveUp(errno == EAGAIN ? "it has stalled" : std::strerror(errno));
            else
                rest += taken, left -= static_cast<std::size_t>(taken);
        }
        return m_Input >= 0;
    }

    bool finish() override {
        const bool tookAll = m_Input >= 0;
        return end() && tookAll;
    }

private:
    ssize_t take(const std::uint8_t* bytes, std::size_t count) const {
        pollfd writable{m_Input, POLLOUT, 0};
        if (poll(&writable, 1, kPatience) == 0)
            return errno = EAGAIN, -1;
        return ::write(m_Input, bytes, count);
    }

    void giveUp(const char* why) {
        NSLog("VX_GLFrameRecorder: the program takes no more (%s); from here on frames are dropped", why);
        close(std::exchange(m_Input, -1));
    }

    bool end() {
        if (m_Input >= 0)
            close(std::exchange(m_Input, -1));
        int status = -1;
        const std::uint64_t until = Clock::system().now() + kLongestEnd;
        while (m_Program > 0 && waitpid(m_Program, &status, WNOHANG) == 0) {
            if (Clock::system().now() > until) {
                NSLog("VX_GLFrameRecorder: the program that was given the frames does not end");
                break;
            }
            Clock::system().sleepUntil(Clock::system().now() + kGlance, -1);
        }
        if (std::exchange(m_Program, 0) == 0)
            return m_EndedWell;
        return m_EndedWell = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    int m_Input;
    pid_t m_Program;
    std::size_t m_Row, m_Rows;
    std::vector<std::uint8_t> m_Frame;
    bool m_EndedWell = false;
};

pid_t spawn(const char* command, int input) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    const char* const words[] = {"/bin/sh", "-c", command, nullptr};
    pid_t program = 0;
    const int failure =
        posix_spawn(&program, words[0], &actions, nullptr, const_cast<char* const*>(words), environ);
    posix_spawn_file_actions_destroy(&actions);
    errno = failure;
    return failure ? 0 : program;
}

} // namespace

std::unique_ptr<FrameSink> makeProgramSink(const std::string& command, int width, int height) {
    int ends[2] = {-1, -1};
    const bool isOpen = pipe2(ends, O_CLOEXEC) == 0;
    const pid_t program = isOpen ? spawn(command.c_str(), ends[0]) : 0;
    const int failure = errno;
    close(ends[0]);
    if (program > 0) {
        fcntl(ends[1], F_SETFL, O_NONBLOCK);
        fcntl(ends[1], F_SETPIPE_SZ, kPipe);
        return std::make_unique<ProgramSink>(ends[1], program, width, height);
    }
    NSLog("VX_GLFrameRecorder: %s cannot be run: %s", command.c_str(), std::strerror(failure));
    close(ends[1]);
    return nullptr;
}

} // namespace vx
