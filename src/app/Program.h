#pragma once
// The program as a whole: its forms, its start and its end. The executable and
// the scenario driver both start the wizard through here.

#include "runtime/Form.h"

namespace wizard {

// Registers the seven forms of the catalogue; call once, after QApplication.
void registerForms();
// A write of the game file store that fails shows in the status line of MainForm.
void installStoreHooks();
// Program start: MainForm loads, its Form_Load runs, and it shows.
rt::Form* startProgram();
// Opens the game `name` of the application folder as a pick in the list does.
void openGame(const QString& name);
// Unloads every form, writes out what is pending and resets the module state,
// so that the next start begins afresh.
void stopProgram();

} // namespace wizard
