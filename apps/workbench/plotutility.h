// SPDX-License-Identifier: MIT
#ifndef PLOTUTILITY_H
#define PLOTUTILITY_H

/// Offers the library what the workbench's plotting knows, for the life of the object: the shade plot modes.
class PlotUtility
{
public:
    PlotUtility();
    ~PlotUtility();
    PlotUtility(const PlotUtility &) = delete;
    PlotUtility &operator=(const PlotUtility &) = delete;
};

#endif
