#pragma once
// The Deck Properties dialog: four options of the deck on page 4, read from
// its section when the dialog opens and written back when it closes.

#include "runtime/Form.h"

class AdvancedDeckPropForm : public rt::Form {
    Q_OBJECT
public:
    static constexpr const char* Name = "AdvancedDeckPropForm";
    AdvancedDeckPropForm();

    void Form_Load() override;
    void Form_Unload() override;

    rt::CheckBox* SplitOption = nullptr;
    rt::CheckBox* ViewDiscardOpt = nullptr;
    rt::CheckBox* DrawFacedownOpt = nullptr;
    rt::CheckBox* resize = nullptr;
};
