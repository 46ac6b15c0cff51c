// SPDX-License-Identifier: MIT
#ifndef ZVCOLORKEYS_H
#define ZVCOLORKEYS_H

// Keys of the colour dialog's tree. What they mean stands with ZvColorDialog.

constexpr char kClrMethodKey[] = "clrMethod";
constexpr char kSelectClrKey[] = "selectClr";
constexpr char kLayerClrKey[] = "layerClr";
constexpr char kBackgroundColorKey[] = "backgroundColor";
constexpr char kIsByLayerEnableKey[] = "isByLayerEnable";
constexpr char kIsByBlockEnableKey[] = "isByBLockEnable"; // callers spell it so
constexpr char kTabsKey[] = "tabs";

#endif
