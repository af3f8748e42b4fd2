#include "app/Program.h"

#include "decks/CardDetailForm.h"
#include "decks/DeckPropForm.h"
#include "decks/ShowCrdForm.h"
#include "decks/ShowImgList.h"
#include "desktop/Desktop.h"
#include "guidance/GameCheckForm.h"
#include "guidance/TreeForm.h"
#include "runtime/Controls.h"
#include "runtime/Runtime.h"
#include "store/ProfileStore.h"
#include "wizard/Catalogue.h"
#include "wizard/CheckForm.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFont>

namespace wizard {

void registerForms() {
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(8.25);
    QApplication::setFont(font);
    registerCatalogue();
    rt::registerForm(QStringLiteral("MainForm"), [] { return new MainForm; });
    rt::registerForm(QStringLiteral("CheckForm"), [] { return new CheckForm; });
    rt::registerForm(QStringLiteral("ShowImgList"), [] { return new ShowImgList; });
    rt::registerForm(QStringLiteral("ShowCrdForm"), [] { return new ShowCrdForm; });
    rt::registerForm(QStringLiteral("CardDetailForm"), [] { return new CardDetailForm; });
    rt::registerForm(QStringLiteral("AdvancedDeckPropForm"),
                     [] { return new AdvancedDeckPropForm; });
    rt::registerForm(QStringLiteral("TreeForm"), [] { return new TreeForm; });
    rt::registerFormSpec(&GameCheckForm::formSpec());
    rt::registerForm(QStringLiteral("GameCheckForm"), [] { return new GameCheckForm; });
    desktop::registerDesktopForms();
}

void installStoreHooks() {
    store::SetProfileWriteErrorHandler([](const QString& file, const QString& reason) {
        if (MainForm* form = mainForm())
            form->showStatus(QStringLiteral("Could not save %1: %2. The file on disk is unchanged.")
                                 .arg(QDir::toNativeSeparators(file), reason));
    });
}

rt::Form* startProgram() {
    MainForm* form = rt::Load<MainForm>();
    desktop::dress(form);
    form->Show();
    return form;
}

void openGame(const QString& name) {
    if (MainForm* form = mainForm()) {
        form->NameTXT->setText(name);
        form->NameTXT_Click();
    }
}

void stopProgram() {
    std::vector<rt::Form*> forms = rt::loadedForms();
    for (rt::Form* form : forms)
        if (form->formName() != QLatin1String(MainForm::Name))
            form->Unload();
    if (MainForm* form = mainForm())
        form->Unload();
    rt::actionEnded();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    Globals::resetState();
}

} // namespace wizard
