#include "desktop/AboutForm.h"

#include "runtime/Controls.h"
#include "runtime/Runtime.h"

#include <QDir>
#include <QLabel>

const rt::FormSpec& AboutForm::formSpec() {
    using rt::Kind;
    static const rt::FormSpec spec{
        "AboutForm",
        "About Zavik Wizard",
        6000,
        2280,
        rt::Border::FixedToolWindow,
        true,
        {
            {"OkBtn", -1, Kind::CommandButton, "OK", 4680, 1740, 1140, 375, "", rt::DefaultButton},
            {"title", -1, Kind::Label, "Zavik Wizard", 180, 150, 5640, 330, "", rt::ArialBold},
            {"version", -1, Kind::Label, "", 180, 510, 5640, 285, ""},
            {"folder", -1, Kind::Label, "", 180, 870, 5640, 780, ""},
        }};
    return spec;
}

AboutForm::AboutForm() : rt::Form(formSpec()) {
    title = get<rt::Label>(QStringLiteral("title"));
    version = get<rt::Label>(QStringLiteral("version"));
    folder = get<rt::Label>(QStringLiteral("folder"));
    OkBtn = get<rt::CommandButton>(QStringLiteral("OkBtn"));
    OkBtn->Click = [this] { Unload(); };
    if (auto* label = qobject_cast<QLabel*>(folder->widget())) {
        // A deep folder wraps at its slashes rather than run off the box.
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
}

void AboutForm::Form_Load() {
    version->setCaption(QStringLiteral("Version 1.0.1"));
    folder->setCaption(QStringLiteral("Games are saved in the application folder:\n") +
                       QDir::toNativeSeparators(rt::AppPath()));
}

void AboutForm::Form_KeyPress(int& KeyAscii) {
    if (KeyAscii == 13 || KeyAscii == 27) {
        KeyAscii = 0;
        Unload();
    }
}
