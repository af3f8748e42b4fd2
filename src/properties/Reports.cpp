// The reports that a game file holds.

#include "wizard/MainForm.h"

// Both arrive with the reports; navigation already calls them.
void MainForm::LoadReportCount() {}
void MainForm::DisplayReport(qint16 index) {
    (void)index;
}
