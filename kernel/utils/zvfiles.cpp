// SPDX-License-Identifier: MIT
#include "utils/zvfiles.h"

#include "base/zvconfig.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <pwd.h>
#include <spawn.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

extern char **environ;

namespace {

constexpr std::size_t kMaxComponent = 255;
constexpr std::size_t kMaxPath = 4095;
constexpr std::size_t kMaxPipeOutput = 1 << 20;
constexpr auto kMaxPipeTime = std::chrono::seconds(2);
constexpr int kMaxBurialMs = 100;

std::string withoutEndingSlashes(std::string path)
{
    while (!path.empty() && path.back() == '/')
        path.pop_back();
    return path;
}

std::string lastComponent(const std::string &path, const char *separators)
{
    const std::size_t slash = path.find_last_of(separators);
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool hasZero(const std::string &path)
{
    return path.find('\0') != std::string::npos;
}

const passwd *userRecord()
{
    return getpwuid(getuid());
}

/// Reads what a child prints, within bounds of time and size.
class PipeReader
{
public:
    PipeReader(pid_t child, int fd) : m_child(child), m_fd(fd) { }

    /// True when the command ended by itself with status 0.
    bool run(std::string &output)
    {
        buryLeftOver();
        const auto deadline = std::chrono::steady_clock::now() + kMaxPipeTime;
        bool open = true;
        while (open || !m_ended) {
            const auto left = deadline - std::chrono::steady_clock::now();
            if (left <= left.zero() || output.size() > kMaxPipeOutput)
                return stop();
            // A child of the command may hold the pipe for ever, so its end is no sign to wait for alone.
            const bool endedBefore = pollEnd();
            const Read got = open ? readSome(output) : kNothing;
            if (got == kEnd)
                open = false;
            else if (got == kNothing && endedBefore)
                break;
            else if (!open)
                std::this_thread::sleep_for(std::chrono::milliseconds(1)); // closed its output, still runs
        }
        return m_status == 0 && output.size() <= kMaxPipeOutput;
    }

private:
    enum Read { kNothing, kSome, kEnd };

    /// Commands of earlier calls that would not end.
    static std::vector<pid_t> &leftOver()
    {
        static std::vector<pid_t> commands;
        return commands;
    }

    static void buryLeftOver()
    {
        std::vector<pid_t> &commands = leftOver();
        commands.erase(std::remove_if(commands.begin(), commands.end(),
                                      [](pid_t command) { return waitpid(command, nullptr, WNOHANG) != 0; }),
                       commands.end());
    }

    Read readSome(std::string &output)
    {
        pollfd descriptor{m_fd, POLLIN, 0};
        const int ready = poll(&descriptor, 1, m_ended ? 0 : 20);
        if (ready <= 0)
            return kNothing;
        char buffer[16384];
        const ssize_t count = read(m_fd, buffer, sizeof buffer);
        if (count < 0)
            return errno == EINTR || errno == EAGAIN ? kNothing : kEnd;
        output.append(buffer, std::size_t(count));
        return count == 0 ? kEnd : kSome;
    }

    bool pollEnd()
    {
        if (m_ended)
            return true;
        int status = 0;
        const pid_t result = waitpid(m_child, &status, WNOHANG);
        if (result == 0 || (result < 0 && errno == EINTR))
            return false;
        m_ended = true;
        m_status = result == m_child ? status : 0; // somebody else has collected it: its output is what counts
        return true;
    }

    bool stop()
    {
        kill(-m_child, SIGKILL);
        // A command that hangs in the system, on a dead disk for one, outlives the signal. It is left to a later call.
        for (int i = 0; i < kMaxBurialMs && !pollEnd(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        if (!m_ended)
            leftOver().push_back(m_child);
        return false;
    }

    pid_t m_child;
    int m_fd;
    int m_status = -1;
    bool m_ended = false;
};

/// Starts the shell at the head of a process group of its own; -1 on failure.
pid_t spawnShell(const char *command, int outputFd)
{
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, outputFd, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    sigset_t signals;
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);

    const char *arguments[] = {"sh", "-c", command, nullptr};
    pid_t child = -1;
    if (posix_spawn(&child, "/bin/sh", &actions, &attributes, const_cast<char **>(arguments), environ) != 0)
        child = -1;
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return child;
}

} // namespace

ZvUtf8String zvsiutGetExePath()
{
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    if (length <= 0)
        return ZvUtf8String();
    const std::string file(path, std::size_t(length));
    return file.substr(0, file.rfind('/'));
}

ZvUtf8String zvutCombinePath(const ZvUtf8String &a, const ZvUtf8String &b)
{
    if (a.isEmpty())
        return b;
    if (b.isEmpty())
        return a;
    const std::string tail = b.toStdString();
    const std::size_t first = tail.find_first_not_of('/');
    return withoutEndingSlashes(a.toStdString()) + "/"
        + (first == std::string::npos ? std::string() : tail.substr(first));
}

ZvString zvutGetFileNoExtName(const ZvString &path)
{
    const std::string name = lastComponent(path.toStdString(), "/");
    const std::size_t dot = name.rfind('.');
    // A name that starts with its only "." is a hidden file's, not an extension.
    return ZvString(std::string_view(dot == std::string::npos || dot == 0 ? name : name.substr(0, dot)));
}

ZvUtf8String zvutGetFileName(const ZvUtf8String &path)
{
    return lastComponent(path.toStdString(), "/");
}

ZvString zvutGetFileName(const ZvString &path)
{
    return ZvString(std::string_view(lastComponent(path.toStdString(), "/")));
}

ZvString zvutGetLastFileNameInPath(const ZvString &path)
{
    return ZvString(std::string_view(lastComponent(path.toStdString(), "/\\")));
}

bool zvutIsExistFile(const ZvUtf8String &path)
{
    struct stat info;
    return stat(path.c_str(), &info) == 0 && !S_ISDIR(info.st_mode);
}

int zvutAccessFile(const ZvString &path, int mode)
{
    const std::string file = path.toStdString();
    if (file.empty() || hasZero(file))
        return 0;
    const bool exists = faccessat(AT_FDCWD, file.c_str(), F_OK, AT_EACCESS) == 0;
    if (exists) {
        const int asked = ((mode & 2) ? W_OK : 0) | ((mode & 4) ? R_OK : 0);
        return faccessat(AT_FDCWD, file.c_str(), asked, AT_EACCESS) == 0 ? 1 : 0;
    }
    if (mode != 2)
        return 0;
    const std::size_t slash = file.rfind('/');
    std::string folder = slash == std::string::npos ? "." : file.substr(0, slash);
    if (folder.empty())
        folder = "/";
    return isDir(folder) && faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0 ? 1 : 0;
}

bool zvutIsValidFilePathName(const ZvUtf8String &path)
{
    const std::string file = path.toStdString();
    if (file.empty() || file.size() > kMaxPath || file.back() == '/' || hasZero(file))
        return false;
    std::size_t start = 0;
    while (start <= file.size()) {
        const std::size_t slash = std::min(file.find('/', start), file.size());
        if (slash - start > kMaxComponent)
            return false;
        start = slash + 1;
    }
    return true;
}

bool isDir(const ZvUtf8String &path)
{
    struct stat info;
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

long long zvutGetFileSize(const ZvUtf8String &path)
{
    struct stat info;
    return stat(path.c_str(), &info) == 0 ? (long long)(info.st_size) : 0;
}

ZvUtf8String zvutGetUserName()
{
    if (const passwd *user = userRecord(); user && user->pw_name)
        return user->pw_name;
    const char *name = std::getenv("USER");
    return name ? name : "";
}

ZvUtf8String zvutGetHomeDir()
{
    const char *home = std::getenv("HOME");
    if (home && home[0] == '/')
        return withoutEndingSlashes(home);
    const passwd *user = userRecord();
    return user && user->pw_dir ? withoutEndingSlashes(user->pw_dir) : std::string();
}

bool zvutPipeCmd(const ZvUtf8String &command, ZvUtf8String &output)
{
    output = ZvUtf8String();
    if (command.isEmpty())
        return false;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return false;
    const pid_t child = spawnShell(command.c_str(), ends[1]);
    close(ends[1]);
    std::string text;
    const bool done = child > 0 && PipeReader(child, ends[0]).run(text);
    close(ends[0]);
    if (done)
        output = text;
    return done;
}

void zvsiutGetAllPlotStyleFiles(ZvArray<ZvString> &files, bool byColor, void *)
{
    files.clear();
    ZvArray<ZvUtf8String> folders;
    zvutEnumPaths(zv_runtime_config("paths/plotStylePaths"), folders);

    const char *const ending = byColor ? ".ctb" : ".stb";
    std::vector<std::string> found;
    for (const ZvUtf8String &folder : folders) {
        DIR *directory = opendir(folder.c_str());
        if (!directory)
            continue;
        while (const dirent *entry = readdir(directory)) {
            const std::size_t length = std::strlen(entry->d_name);
            if (length <= 4 || strcasecmp(entry->d_name + length - 4, ending) != 0)
                continue;
            const ZvUtf8String path = zvutCombinePath(folder, entry->d_name);
            if (zvutIsExistFile(path))
                found.push_back(path.toStdString());
        }
        closedir(directory);
    }
    std::sort(found.begin(), found.end(), [](const std::string &a, const std::string &b) {
        const int order = lastComponent(a, "/").compare(lastComponent(b, "/"));
        return order != 0 ? order < 0 : a < b;
    });
    for (const std::string &path : found)
        files.append(ZvString(std::string_view(path)));
}
