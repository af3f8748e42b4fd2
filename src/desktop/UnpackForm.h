#pragma once
// What an unpack will create, shown before anything is written: the game, its
// folder and every file, those the folder already holds marked. Unpack goes
// on; Cancel (or Esc) leaves the folder alone.

#include "runtime/Form.h"

namespace pack {
struct Preview;
}

class UnpackForm : public rt::Form {
    Q_OBJECT
public:
    static constexpr const char* Name = "UnpackForm";
    static const rt::FormSpec& formSpec();
    UnpackForm();
    void Form_KeyPress(int& KeyAscii) override;

    // Fills the form from a preview of the archive into `target`.
    void show(const pack::Preview& preview, const QString& zip, const QString& target);
    // Whether the user chose Unpack when the modal form closed.
    static bool confirmed;

    rt::Label* SummaryLbl = nullptr;
    rt::ListBox* FilesList = nullptr;
    rt::CommandButton* UnpackBtn = nullptr;
    rt::CommandButton* CancelBtn = nullptr;
};
