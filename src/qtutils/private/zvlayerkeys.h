// SPDX-License-Identifier: MIT
#ifndef ZVLAYERKEYS_H
#define ZVLAYERKEYS_H

class ZvLayerTable;

/// The keys of the open layer list, for what the pointer does: Left and Right go over the buttons of a row to its name
/// and back, Space and Return press the button that is framed, or the name. The list opens on the names.
void zvGiveKeys(ZvLayerTable *table);

#endif
