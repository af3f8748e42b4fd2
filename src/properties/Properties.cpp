// The property lists of page 6.

#include "wizard/MainForm.h"

// Both arrive with the property lists; navigation already calls them.
void MainForm::showProperties() {}
void MainForm::SaveProperties(const QString& file) {
    (void)file;
}
