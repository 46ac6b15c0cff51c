// SPDX-License-Identifier: MIT
#include "dxf_writer.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace zvdxf {

namespace {

struct SplitPath
{
    std::string folder; //!< with its slash; empty for the current one
    std::string name;
};

SplitPath split(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return {{}, path};
    return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

/*! The file that a path means: symbolic links followed, to a file that need not exist yet. False with errno set. */
bool followLinks(std::string &path)
{
    constexpr int mostLinks = 40; // as the system itself allows
    for (int i = 0; i < mostLinks; ++i) {
        char target[PATH_MAX];
        const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
        if (length < 0)
            return errno == EINVAL || errno == ENOENT; // no link, or nothing there
        const std::string next(target, std::size_t(length));
        std::string folder = next.front() == '/' ? std::string() : split(path).folder;
        path = std::move(folder.append(next));
    }
    errno = ELOOP;
    return false;
}

/*! Twelve characters nobody can foresee. */
std::string randomName()
{
    static constexpr char letters[] = "abcdefghijklmnopqrstuvwxyz012345";
    unsigned char bytes[12];
    if (::getrandom(bytes, sizeof bytes, 0) != ssize_t(sizeof bytes))
        return {};
    std::string name;
    for (const unsigned char byte : bytes)
        name += letters[byte % 32];
    return name;
}

} // namespace

AtomicFile::AtomicFile() = default;

AtomicFile::~AtomicFile()
{
    discard();
}

bool AtomicFile::fail(const char *deed, int errorNumber)
{
    return fail(deed, std::strerror(errorNumber));
}

bool AtomicFile::fail(const char *deed, const char *reason)
{
    m_error = std::string("cannot ") + deed + " " + m_path + ": " + reason;
    discard();
    return false;
}

bool AtomicFile::open(const std::string &path)
{
    discard();
    m_error.clear();
    m_path = path;
    m_target = path;
    if (path.empty())
        return fail("save", ENOENT);
    if (!followLinks(m_target))
        return fail("save", errno);

    struct stat old;
    const bool exists = ::stat(m_target.c_str(), &old) == 0;
    if (!exists && errno != ENOENT)
        return fail("save", errno);
    if (exists && S_ISDIR(old.st_mode))
        return fail("save", EISDIR);
    if (exists && !S_ISREG(old.st_mode))
        return fail("save", "it is not a regular file");
    // A rename needs no right on the file it replaces, but people who write-protect a file mean it.
    if (exists && ::faccessat(AT_FDCWD, m_target.c_str(), W_OK, AT_EACCESS) != 0)
        return fail("save", errno);

    constexpr int attempts = 100;
    constexpr std::size_t longestName = 200; // leaves room for ours in the 255 bytes a name may have
    const SplitPath target = split(m_target);
    for (int i = 0; i < attempts && m_descriptor < 0; ++i) {
        const std::string suffix = randomName();
        if (suffix.empty())
            return fail("save", errno);
        const std::string temporary = target.folder + "." + target.name.substr(0, longestName) + "." + suffix;
        // A new file gets the rights any new file gets; the old one's are given below, and until then nobody else reads
        // it.
        const mode_t mode = exists ? 0600 : 0666;
        m_descriptor = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode);
        if (m_descriptor >= 0)
            m_temporary = temporary;
        else if (errno != EEXIST)
            return fail("save", errno);
    }
    if (m_descriptor < 0)
        return fail("save", EEXIST);

    if (exists) {
        // Giving a file away is up to the system; without it the saver owns the file, as with any copy.
        if (::fchown(m_descriptor, old.st_uid, old.st_gid) != 0)
            (void)!::fchown(m_descriptor, uid_t(-1), old.st_gid);
        if (::fchmod(m_descriptor, old.st_mode & 07777) != 0)
            return fail("save", errno);
    }
    return true;
}

bool AtomicFile::write(std::string_view bytes)
{
    if (m_descriptor < 0)
        return false;
    while (!bytes.empty()) {
        const ssize_t count = ::write(m_descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return fail("write", errno);
        bytes.remove_prefix(std::size_t(count));
    }
    return true;
}

bool AtomicFile::commit()
{
    if (m_descriptor < 0)
        return false;
    if (::fsync(m_descriptor) != 0)
        return fail("write", errno);
    const int descriptor = m_descriptor;
    m_descriptor = -1;
    if (::close(descriptor) != 0)
        return fail("write", errno);
    if (::rename(m_temporary.c_str(), m_target.c_str()) != 0)
        return fail("replace", errno);
    m_temporary.clear();

    // The new name, too, shall outlast a power cut. The content is safe by now, so a failure here is none.
    const std::string folder = split(m_target).folder;
    const int folderDescriptor = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folderDescriptor >= 0) {
        (void)!::fsync(folderDescriptor);
        ::close(folderDescriptor);
    }
    return true;
}

void AtomicFile::discard()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    if (!m_temporary.empty())
        ::unlink(m_temporary.c_str());
    m_temporary.clear();
}

} // namespace zvdxf
