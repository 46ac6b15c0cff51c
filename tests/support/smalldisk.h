// SPDX-License-Identifier: MIT
#ifndef SMALLDISK_H
#define SMALLDISK_H

#include <QtGlobal>

#include <csignal>
#include <sys/resource.h>

/// No file may grow beyond so many bytes, for the life of the object: as a full disk, without one.
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t bytes)
    {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY(SmallDisk)

private:
    rlimit m_before;
    void (*m_handler)(int);
};

#endif
