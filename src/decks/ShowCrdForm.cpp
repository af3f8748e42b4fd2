#include "decks/ShowCrdForm.h"

#include "runtime/FileSystem.h"
#include "runtime/Runtime.h"
#include "wizard/Catalogue.h"
#include "wizard/MainForm.h"

#include <QDir>

ShowCrdForm::ShowCrdForm() : rt::Form(wizard::showCrdFormSpec()) {
    crdPict = get<rt::PictureBox>(QStringLiteral("crdPict"));
}

void ShowCrdForm::Form_KeyPress(int& KeyAscii) {
    (void)KeyAscii;
    Unload();
}

void showCardImage(const QString& fileName, bool modal) {
    const MainForm* main = mainForm();
    const QString path = rt::AppPath() + QLatin1Char('/') +
                         (main ? main->DirName->Text() : QString()) + QLatin1Char('/') + fileName;
    // Decoded before the viewer loads, so that a file that is gone, is no
    // image or is too large to decode leaves no empty viewer behind.
    const QImage image = rt::LoadPicture(path);
    if (image.isNull()) {
        rt::MsgBox(QStringLiteral("Cannot open image ") + QDir::toNativeSeparators(path), 0);
        return;
    }
    const bool alreadyUp = rt::loaded<ShowCrdForm>() != nullptr;
    auto* viewer = rt::Load<ShowCrdForm>();
    viewer->crdPict->setPicture(image, path);
    viewer->setWidth(viewer->crdPict->Width() + 80);
    viewer->setHeight(viewer->crdPict->Height() + 320);
    // A viewer that is up already stays as it was opened and only comes to
    // the front: it cannot turn modal while the wizard works beside it.
    viewer->Show(modal && !alreadyUp ? 1 : 0);
}
