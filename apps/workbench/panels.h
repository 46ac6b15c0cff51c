// SPDX-License-Identifier: MIT
#ifndef PANELS_H
#define PANELS_H

class MainWindow;
class UpdateBusHost;

/// Adds the property panel, the preview and the bus monitor to the window, closed. \a bus must outlive the window.
void addPanels(MainWindow &window, UpdateBusHost &bus);

#endif
