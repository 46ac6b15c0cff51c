// SPDX-License-Identifier: MIT
#ifndef ZVEDITFRAME_H
#define ZVEDITFRAME_H

#include "private/zvcurrentdrawing.h"

#include <QtGlobal>

#include <exception>

/// The edit frame of a drawing for the length of a scope. A scope that is left without end(), by an exception or because
/// there is nothing to do, aborts the frame: everything written in it is put back.
class ZvEditFrame
{
public:
    explicit ZvEditFrame(ZvDbDatabase *database) : m_service(zvHostService()), m_database(database)
    {
        m_service->beginFrame(m_database);
    }
    ~ZvEditFrame()
    {
        if (m_hasEnded)
            return;
        // Listeners hear of what is put back. One that throws once more must not end the program: the exception that
        // ended the scope is already on its way to the caller.
        try {
            m_service->abortFrame(m_database);
        } catch (const std::exception &) { // NOLINT(bugprone-empty-catch)
        }
    }
    Q_DISABLE_COPY(ZvEditFrame)

    void end()
    {
        m_hasEnded = true;
        m_service->endFrame(m_database);
    }

private:
    ZvDbHostService *const m_service;
    ZvDbDatabase *const m_database;
    bool m_hasEnded = false;
};

#endif
