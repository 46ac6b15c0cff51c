// SPDX-License-Identifier: MIT
// A member of the host's bus service, which keeps its receivers in m_receivers.
#include <zvlayerultralcombobox.h>
#include <zvqtcontrolhelp.h>

#include <QComboBox>
#include <QSignalBlocker>
#include <QWidget>

#include <vector>

class BusService
{
public:
    // the code

private:
    std::vector<CZvQtControlHelp *> m_receivers;
};
