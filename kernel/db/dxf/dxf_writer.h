// SPDX-License-Identifier: MIT
#pragma once

#include "dxf_store.h"

namespace zvdxf {

/*! Where a writer puts its bytes. */
class Output
{
public:
    virtual ~Output() = default;
    /*! False when the bytes could not be taken; error() then says why, and nothing more is written. */
    virtual bool write(std::string_view bytes) = 0;
    virtual std::string error() const = 0;
};

/*! A file in memory. */
class MemoryOutput : public Output
{
public:
    bool write(std::string_view bytes) override;
    std::string error() const override { return {}; }
    const std::string &bytes() const { return m_bytes; }

private:
    std::string m_bytes;
};

/*! Saves a file so that its old content stays whole until the new one is: writes a new file beside it and renames that
   over it. A symbolic link is followed, the old file's permissions are kept (and its owner, where the system lets us).
   Unless commit() succeeds the new file is removed again, at the latest by the destructor, and the old one is as it
   was. */
class AtomicFile : public Output
{
public:
    AtomicFile();
    ~AtomicFile() override;
    AtomicFile(const AtomicFile &) = delete;
    AtomicFile &operator=(const AtomicFile &) = delete;

    // Bytes go to the system as they are given; the Writer hands on large blocks.

    /*! Makes the new file in \a path's folder, under a name nobody can foresee. */
    bool open(const std::string &path);
    bool write(std::string_view bytes) override;
    /*! Brings everything to the disk and puts the new file in the old one's place. */
    bool commit();
    /*! Removes the new file. Harmless after commit(). */
    void discard();
    /*! What failed and why: "cannot write plan.dxf: No space left on device". Empty while all is well. */
    std::string error() const override { return m_error; }

private:
    bool fail(const char *deed, int errorNumber);
    bool fail(const char *deed, const char *reason);

    std::string m_path; //!< as asked for, for messages
    std::string m_target; //!< with links followed
    std::string m_temporary; //!< empty: nothing to remove
    std::string m_error;
    int m_descriptor = -1;
};

/*! Writes a drawing file, front to back. Either goes along an existing file, in its hand, keeping most of its records
   and replacing, leaving out or adding others between them; or makes a whole new file of owned tags.

    \code
    Writer writer(store, output);
    writer.setHeaderVariable("$CLAYER", {{8, "Walls"}});
    writer.keepPreamble();
    writer.keep(0, 120);
    writer.record(edited.tags());         // instead of record 120
    writer.keep(121, count - 121);
    if (!writer.finish())
        report(writer.error());
    \endcode

    What is kept comes out byte for byte. Once something failed all further calls do nothing and return false. */
class Writer
{
public:
    /*! Goes along \a source, which must outlive the writer, in its own style. */
    Writer(const Store &source, Output &output);
    /*! The same in another style: nothing is copied as bytes, all tags are written anew with the same values. */
    Writer(const Store &source, Output &output, const FileStyle &style);
    /*! A new file. Binary files begin with their sentinel at the first tag. */
    Writer(Output &output, const FileStyle &style);
    ~Writer();

    /*! Hears of bytes written; \a total is what is expected, at least what the source file has. Cancelling makes the
       writer fail with "cancelled". */
    void setProgress(Progress progress, std::uint64_t total = 0);

    /*! Tags that shall stand for a HEADER variable, without its `9` tag. Takes effect when the HEADER section of the
       source is kept: a variable that is there has its tags replaced in place and only where they differ, another is
       added at the end of the section. A source without a HEADER section gets one in front of its first section. Call
       before keeping. */
    void setHeaderVariable(std::string_view name, std::vector<OwnedTag> values);
    void removeHeaderVariable(std::string_view name);

    bool keepPreamble(); //!< comments in front of the first record, and the binary sentinel
    bool keep(std::uint32_t firstRecord, std::uint32_t count); //!< source records as they stand
    bool keepAll(); //!< preamble and all records
    bool record(const std::vector<OwnedTag> &tags); //!< also for loose tags in a new file
    bool tag(int code, std::string_view value); //!< one more tag; value as in OwnedTag

    /*! Closes the section that is open, if any, and the file, if it is not: the end of a new file, or of one that was
       cut off (see Store::wholeRecords). */
    bool end();

    /*! Hands the rest to the output. True when everything went well; does not commit an AtomicFile. */
    bool finish();
    bool isCancelled() const;
    /*! What failed; empty while all is well. */
    const std::string &error() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace zvdxf
