// SPDX-License-Identifier: MIT
#ifndef ZVPROPERTYWRITERS_H
#define ZVPROPERTYWRITERS_H

struct ZvUiPendingUpdate;

// What the command "GLOBAL_UI_UPDATEDB" does for each property: with a pick-first selection the selected entities change
// and the drawing's current value stays, without one the current value changes. Equal values are not written, so a
// command that runs twice for one request does nothing the second time.

void zvWriteColor(const ZvUiPendingUpdate &update);
void zvWriteLineWeight(const ZvUiPendingUpdate &update);
void zvWriteLineType(const ZvUiPendingUpdate &update);
void zvWriteLayer(const ZvUiPendingUpdate &update);
void zvWriteMaterial(const ZvUiPendingUpdate &update);
void zvWriteDimStyle(const ZvUiPendingUpdate &update);
void zvWriteTextStyle(const ZvUiPendingUpdate &update);
void zvWriteTableStyle(const ZvUiPendingUpdate &update);
void zvWriteMLeaderStyle(const ZvUiPendingUpdate &update);
void zvWritePlotStyle(const ZvUiPendingUpdate &update);

#endif
