#include "deckview/ImportPreviewForm.h"

#include "deckview/PageDeck.h"
#include "history/History.h"

#include <QPlainTextEdit>

namespace deckview {

const rt::FormSpec& ImportPreviewForm::formSpec() {
    using rt::Kind;
    static const rt::FormSpec spec{
        "ImportPreviewForm",
        "Import Cards",
        8400,
        5520,
        rt::Border::FixedToolWindow,
        true,
        {
            {"summary", -1, Kind::Label, "", 120, 120, 8160, 510, "", rt::ArialBold},
            {"details", -1, Kind::TextBox, "", 120, 690, 8160, 3840, "", rt::MultiLine},
            {"RemoveMissing", -1, Kind::CheckBox, "Remove the cards that the file does not name",
             120, 4620, 5400, 315, ""},
            {"ApplyBtn", -1, Kind::CommandButton, "Apply", 5700, 5025, 1200, 375, "",
             rt::DefaultButton},
            {"CancelBtn", -1, Kind::CommandButton, "Cancel", 7080, 5025, 1200, 375, ""},
        }};
    return spec;
}

ImportPreviewForm::ImportPreviewForm() : rt::Form(formSpec()) {
    summary = get<rt::Label>(QStringLiteral("summary"));
    details = get<rt::TextBox>(QStringLiteral("details"));
    RemoveMissing = get<rt::CheckBox>(QStringLiteral("RemoveMissing"));
    ApplyBtn = get<rt::CommandButton>(QStringLiteral("ApplyBtn"));
    CancelBtn = get<rt::CommandButton>(QStringLiteral("CancelBtn"));
    RemoveMissing->Click = [this] { RemoveMissing_Click(); };
    ApplyBtn->Click = [this] { ApplyBtn_Click(); };
    CancelBtn->Click = [this] { Unload(); };
    if (auto* text = qobject_cast<QPlainTextEdit*>(details->widget())) {
        text->setReadOnly(true);
        text->setLineWrapMode(QPlainTextEdit::NoWrap);
    }
}

void ImportPreviewForm::setInput(const QString& fileName, const sheet::CsvRead& csv) {
    m_csv = csv;
    m_deck = pageContent();
    m_columns = deckColumns();
    m_images = sheet::folderImages(imageDir());
    setCaption(QStringLiteral("Import Cards - ") + fileName);
    plan();
}

void ImportPreviewForm::plan() {
    m_plan = sheet::planImport(m_deck, m_columns, m_csv, m_images, RemoveMissing->Value() != 0);
    const int refused = static_cast<int>(m_plan.refused.size());
    summary->setCaption(QStringLiteral("%1 added, %2 changed, %3 unchanged, %4 removed, %5 refused")
                            .arg(m_plan.added())
                            .arg(m_plan.changed())
                            .arg(m_plan.unchanged())
                            .arg(m_plan.removed())
                            .arg(refused));
    QString text = sheet::previewText(m_plan);
    text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    details->setText(text);
    const bool anything = m_plan.added() + m_plan.changed() + m_plan.removed() > 0;
    ApplyBtn->widget()->setEnabled(anything);
}

void ImportPreviewForm::RemoveMissing_Click() {
    plan();
}

void ImportPreviewForm::ApplyBtn_Click() {
    // The deck may have moved on under a window that stands beside it; the
    // plan holds rows of the deck it was made for, so it is made anew.
    if (deckOnPage()) {
        m_deck = pageContent();
        plan();
        history::nameNextStep(QStringLiteral("Import ") + history::deckName(deckSection()));
        applyPlan(m_plan);
    }
    Unload();
}

void ImportPreviewForm::Form_KeyPress(int& KeyAscii) {
    if (KeyAscii == 27) {
        KeyAscii = 0;
        Unload();
    }
}

} // namespace deckview
