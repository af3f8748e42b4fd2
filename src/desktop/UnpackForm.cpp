#include "desktop/UnpackForm.h"

#include "pack/Unpack.h"
#include "runtime/Controls.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>

bool UnpackForm::confirmed = false;

const rt::FormSpec& UnpackForm::formSpec() {
    using rt::Kind;
    static const rt::FormSpec spec{
        "UnpackForm",
        "Unpack game",
        6600,
        4800,
        rt::Border::FixedToolWindow,
        true,
        {
            {"SummaryLbl", -1, Kind::Label, "", 180, 150, 6240, 780, ""},
            {"FilesList", -1, Kind::ListBox, "", 180, 1020, 6240, 3120, ""},
            {"UnpackBtn", -1, Kind::CommandButton, "&Unpack", 3960, 4290, 1140, 375, "",
             rt::DefaultButton},
            {"CancelBtn", -1, Kind::CommandButton, "Cancel", 5280, 4290, 1140, 375, ""},
        }};
    return spec;
}

UnpackForm::UnpackForm() : rt::Form(formSpec()) {
    SummaryLbl = get<rt::Label>(QStringLiteral("SummaryLbl"));
    FilesList = get<rt::ListBox>(QStringLiteral("FilesList"));
    UnpackBtn = get<rt::CommandButton>(QStringLiteral("UnpackBtn"));
    CancelBtn = get<rt::CommandButton>(QStringLiteral("CancelBtn"));
    if (auto* label = qobject_cast<QLabel*>(SummaryLbl->widget()))
        label->setWordWrap(true);
    confirmed = false;
    UnpackBtn->Click = [this] {
        confirmed = true;
        Unload();
    };
    CancelBtn->Click = [this] { Unload(); };
}

void UnpackForm::show(const pack::Preview& preview, const QString& zip, const QString& target) {
    const int kept = static_cast<int>(preview.existing.size());
    SummaryLbl->setCaption(
        QStringLiteral("%1 will create the game \"%2\" with %3 files in %4.%5")
            .arg(QFileInfo(zip).fileName(), preview.gameName)
            .arg(preview.files.size())
            .arg(QDir::toNativeSeparators(target))
            .arg(kept == 0 ? QString()
                           : QStringLiteral(" %1 of them are there already; those that differ "
                                            "will be asked about.")
                                 .arg(kept)));
    FilesList->Clear();
    for (const QString& file : preview.files)
        FilesList->AddItem(
            preview.existing.contains(file) ? file + QStringLiteral("   (already there)") : file);
}

void UnpackForm::Form_KeyPress(int& KeyAscii) {
    if (KeyAscii == 27) {
        KeyAscii = 0;
        Unload();
    }
}
