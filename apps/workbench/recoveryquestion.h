// SPDX-License-Identifier: MIT
#ifndef RECOVERYQUESTION_H
#define RECOVERYQUESTION_H

class Autosave;
class MainWindow;
class RecoveryStore;

/// Asks the user what shall become of the drawings that a killed program has left behind, and does it. Nothing is asked
/// where there are none. A drawing that cannot be opened stays in the store.
void offerRecovery(MainWindow &window, RecoveryStore &store, Autosave &autosave);

#endif
