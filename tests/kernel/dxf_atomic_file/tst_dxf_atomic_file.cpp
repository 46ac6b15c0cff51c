// SPDX-License-Identifier: MIT
#include "dxf_testing.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace zvdxf;
using namespace dxf_testing;
namespace fs = std::filesystem;

namespace {

constexpr uid_t nobody = 65534;

/*! What a child process answers; anything else is an exit of its own. */
enum Answer { Good = 40, Bad = 41, CannotTest = 42 };

/*! Runs \a test in a child, whose limits, rights and mounts end with it. What goes wrong is said on the error output.
 */
int inChild(const std::function<Answer()> &test)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(test());
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

Answer answerTo(bool isRight, const std::string &what)
{
    if (!isRight)
        std::fprintf(stderr, "not as expected: %s\n", what.c_str());
    return isRight ? Good : Bad;
}

class DxfAtomicFile : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string pattern = testing::TempDir() + "dxf_atomic_XXXXXX";
        ASSERT_TRUE(::mkdtemp(&pattern[0]));
        m_folder = pattern;
        m_path = m_folder + "/plan.dxf";
        writeFile(m_path, "old content");
    }
    void TearDown() override { fs::remove_all(m_folder); }

    static bool save(const std::string &path, const std::string &content, std::string *error = nullptr)
    {
        AtomicFile file;
        const bool saved = file.open(path) && file.write(content) && file.commit();
        if (error)
            *error = file.error();
        return saved;
    }

    static std::size_t filesIn(const std::string &folder)
    {
        return std::size_t(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    /*! The old file is whole and nothing else is in its folder. */
    bool isUntouched() const { return fileContent(m_path) == "old content" && filesIn(m_folder) == 1; }

    static mode_t modeOf(const std::string &path)
    {
        struct stat info;
        return ::stat(path.c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
    }

    std::string m_folder;
    std::string m_path;
};

TEST_F(DxfAtomicFile, replacesTheOldFileOnCommitOnly)
{
    AtomicFile file;
    ASSERT_TRUE(file.open(m_path)) << file.error();
    ASSERT_TRUE(file.write("new "));
    ASSERT_TRUE(file.write("content"));
    EXPECT_EQ(fileContent(m_path), "old content");
    ASSERT_TRUE(file.commit()) << file.error();
    EXPECT_EQ(fileContent(m_path), "new content");
    EXPECT_EQ(filesIn(m_folder), 1u);
    EXPECT_EQ(file.error(), "");
    EXPECT_FALSE(file.write("more")) << "it is over";
}

TEST_F(DxfAtomicFile, makesAFileThatWasNotThere)
{
    const std::string path = m_folder + "/new.dxf";
    ASSERT_TRUE(save(path, "content"));
    EXPECT_EQ(fileContent(path), "content");
    const mode_t mask = ::umask(0);
    ::umask(mask);
    EXPECT_EQ(modeOf(path), 0666 & ~mask);
}

TEST_F(DxfAtomicFile, takesAPathWithoutFolder)
{
    const fs::path before = fs::current_path();
    fs::current_path(m_folder);
    EXPECT_TRUE(save("plan.dxf", "new content"));
    fs::current_path(before);
    EXPECT_EQ(fileContent(m_path), "new content");
}

TEST_F(DxfAtomicFile, takesTheLongestNameThereIs)
{
    const std::string path = m_folder + "/" + std::string(251, 'n') + ".dxf";
    EXPECT_TRUE(save(path, "content"));
    EXPECT_EQ(fileContent(path), "content");
}

TEST_F(DxfAtomicFile, keepsThePermissionsOfTheOldFile)
{
    for (const mode_t mode : {0600, 0664, 0777}) {
        ASSERT_EQ(::chmod(m_path.c_str(), mode), 0);
        ASSERT_TRUE(save(m_path, "new content"));
        EXPECT_EQ(modeOf(m_path), mode);
    }
}

TEST_F(DxfAtomicFile, keepsTheOwnerWhereAllowed)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root may give files away";
    ASSERT_EQ(::chown(m_path.c_str(), nobody, nobody), 0);
    ASSERT_TRUE(save(m_path, "new content"));
    struct stat info;
    ASSERT_EQ(::stat(m_path.c_str(), &info), 0);
    EXPECT_EQ(info.st_uid, nobody);
    EXPECT_EQ(info.st_gid, gid_t(nobody));
}

TEST_F(DxfAtomicFile, followsSymbolicLinks)
{
    ASSERT_TRUE(fs::create_directory(m_folder + "/links"));
    fs::create_symlink("../plan.dxf", m_folder + "/links/one.dxf");
    fs::create_symlink(m_folder + "/links/one.dxf", m_folder + "/links/two.dxf");
    ASSERT_TRUE(save(m_folder + "/links/two.dxf", "new content"));
    EXPECT_EQ(fileContent(m_path), "new content");
    EXPECT_TRUE(fs::is_symlink(m_folder + "/links/two.dxf"));
    EXPECT_TRUE(fs::is_symlink(m_folder + "/links/one.dxf"));

    fs::create_symlink("missing.dxf", m_folder + "/links/dangling.dxf");
    ASSERT_TRUE(save(m_folder + "/links/dangling.dxf", "content"));
    EXPECT_EQ(fileContent(m_folder + "/links/missing.dxf"), "content");
    EXPECT_TRUE(fs::is_symlink(m_folder + "/links/dangling.dxf"));

    fs::create_symlink("round.dxf", m_folder + "/links/round.dxf");
    std::string error;
    EXPECT_FALSE(save(m_folder + "/links/round.dxf", "content", &error));
    EXPECT_NE(error.find(std::strerror(ELOOP)), std::string::npos) << error;
}

TEST_F(DxfAtomicFile, discardedOrForgottenItLeavesNothing)
{
    {
        AtomicFile file;
        ASSERT_TRUE(file.open(m_path));
        ASSERT_TRUE(file.write("half"));
        EXPECT_EQ(filesIn(m_folder), 2u);
    }
    EXPECT_TRUE(isUntouched());
    AtomicFile file;
    ASSERT_TRUE(file.open(m_path));
    file.discard();
    EXPECT_FALSE(file.commit());
    EXPECT_TRUE(isUntouched());
}

TEST_F(DxfAtomicFile, nobodyElseReadsTheNewFileOfAPrivateOne)
{
    ASSERT_EQ(::chmod(m_path.c_str(), 0600), 0);
    AtomicFile file;
    ASSERT_TRUE(file.open(m_path));
    for (const auto &entry : fs::directory_iterator(m_folder))
        EXPECT_EQ(modeOf(entry.path().string()), mode_t(0600)) << entry.path();
}

TEST_F(DxfAtomicFile, targetsThatCannotBeSavedSayWhy)
{
    const std::tuple<std::string, std::string> rows[] = {
        {m_folder + "/no/such/plan.dxf", std::strerror(ENOENT)},
        {m_folder, std::strerror(EISDIR)},
        {m_path + "/plan.dxf", std::strerror(ENOTDIR)},
        {"/dev/null", "it is not a regular file"},
        {"", std::strerror(ENOENT)},
        {m_folder + "/" + std::string(300, 'n'), std::strerror(ENAMETOOLONG)},
    };
    for (const auto &[path, reason] : rows) {
        std::string error;
        EXPECT_FALSE(save(path, "content", &error)) << path;
        EXPECT_EQ(error, "cannot save " + path + ": " + reason);
    }
    EXPECT_TRUE(isUntouched());
}

TEST_F(DxfAtomicFile, withoutRightsTheOldFileStaysWhole)
{
    // Rights mean nothing to root, so a child gives them up.
    ASSERT_EQ(::chmod(m_folder.c_str(), 0755), 0);
    ASSERT_EQ(::chmod(m_path.c_str(), 0444), 0);
    const std::string path = m_path;
    const std::string folder = m_folder;
    const auto asNobody = [&](const std::function<Answer()> &test) {
        return inChild([&test]() {
            if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0))
                return CannotTest;
            return test();
        });
    };

    const std::string expected = "cannot save " + path + ": " + std::strerror(EACCES);
    EXPECT_EQ(asNobody([&] {
                  std::string error;
                  return answerTo(!save(path, "new", &error) && error == expected, "read-only file: " + error);
              }),
              Good);
    EXPECT_TRUE(isUntouched());

    // The file may be written, its folder may not.
    ASSERT_EQ(::chmod(m_path.c_str(), 0666), 0);
    ASSERT_EQ(::chmod(m_folder.c_str(), 0555), 0);
    EXPECT_EQ(asNobody([&] {
                  std::string error;
                  return answerTo(!save(path, "new", &error) && error == expected, "read-only folder: " + error);
              }),
              Good);
    ASSERT_EQ(::chmod(m_folder.c_str(), 0755), 0);
    EXPECT_TRUE(isUntouched());

    // The folder may be written, the file is write-protected: a rename alone would go through.
    ASSERT_EQ(::chmod(m_path.c_str(), 0444), 0);
    ASSERT_EQ(::chmod(m_folder.c_str(), 0777), 0);
    EXPECT_EQ(asNobody([&] {
                  std::string error;
                  return answerTo(!save(path, "new", &error) && error == expected, "protected file: " + error);
              }),
              Good);
    EXPECT_TRUE(isUntouched());
}

TEST_F(DxfAtomicFile, whenNoMoreFitsTheOldFileStaysWhole)
{
    const std::string path = m_path;
    EXPECT_EQ(inChild([&path] {
                  const rlimit limit{64 * 1024, 64 * 1024};
                  std::signal(SIGXFSZ, SIG_IGN);
                  ::setrlimit(RLIMIT_FSIZE, &limit);
                  std::string error;
                  const bool saved = save(path, std::string(1024 * 1024, 'x'), &error);
                  return answerTo(!saved && error == "cannot write " + path + ": " + std::strerror(EFBIG), error);
              }),
              Good);
    EXPECT_TRUE(isUntouched());
}

TEST_F(DxfAtomicFile, onAFullDiskTheOldFileStaysWhole)
{
    const std::string disk = m_folder + "/disk";
    ASSERT_TRUE(fs::create_directory(disk));
    const int answer = inChild([&disk] {
        // A disk of 64 KiB that only the child sees.
        const int spaces = ::geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER;
        if (::unshare(spaces) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
            || ::mount("none", disk.c_str(), "tmpfs", 0, "size=64k") != 0)
            return CannotTest;
        const std::string path = disk + "/plan.dxf";
        writeFile(path, "old content");

        Store store;
        load(store, ascii(plainDrawing()));
        AtomicFile file;
        if (!file.open(path))
            return answerTo(false, file.error());
        Writer writer(store, file);
        writer.keepAll();
        for (int i = 0; i < 10000; ++i)
            writer.tag(999, "a comment that fills the disk");
        const bool saved = writer.finish() && file.commit();
        const std::string expected = "cannot write " + path + ": " + std::strerror(ENOSPC);
        return answerTo(!saved && writer.error() == expected && fileContent(path) == "old content"
                            && filesIn(disk) == 1,
                        writer.error());
    });
    if (answer == CannotTest)
        GTEST_SKIP() << "no rights to mount a small disk here";
    EXPECT_EQ(answer, Good);
}

TEST_F(DxfAtomicFile, aCancelledSaveLeavesTheOldFileWhole)
{
    Store store;
    ASSERT_TRUE(load(store, ascii(plainDrawing())));
    {
        AtomicFile file;
        ASSERT_TRUE(file.open(m_path));
        Writer writer(store, file);
        writer.setProgress([](std::uint64_t, std::uint64_t) { return false; });
        writer.keepAll();
        EXPECT_FALSE(writer.finish());
        EXPECT_TRUE(writer.isCancelled());
    }
    EXPECT_TRUE(isUntouched());
}

TEST_F(DxfAtomicFile, aDrawingIsSavedOverItself)
{
    const std::string bytes = ascii(plainDrawing());
    writeFile(m_path, bytes);
    Store store;
    ASSERT_TRUE(store.load(m_path));
    AtomicFile file;
    ASSERT_TRUE(file.open(m_path));
    Writer writer(store, file);
    writer.setHeaderVariable("$LTSCALE", {{40, "2.0"}});
    ASSERT_TRUE(writer.keepAll() && writer.finish());
    ASSERT_TRUE(file.commit());
    Store again;
    ASSERT_TRUE(again.load(m_path));
    EXPECT_TRUE(again.headerVariable("$LTSCALE"));
    EXPECT_EQ(again.records().size(), store.records().size());
}

} // namespace
