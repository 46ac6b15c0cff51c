// SPDX-License-Identifier: MIT
#ifndef LINETYPEHOST_H
#define LINETYPEHOST_H

#include "dialogcommand.h"

#include <memory>

/// While it lives, LINETYPE runs the line type manager, and controls find it by its service. To be made after the
/// library's load and to be deleted before its unload.
class LinetypeHost
{
public:
    LinetypeHost();
    ~LinetypeHost();
    LinetypeHost(const LinetypeHost &) = delete;
    LinetypeHost &operator=(const LinetypeHost &) = delete;

private:
    class Service;

    std::unique_ptr<Service> m_service;
    DialogCommand m_command;
};

#endif
