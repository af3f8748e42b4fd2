#pragma once
// The card image viewer: one image of the game's directory at its own size,
// closed by any key or its close box.

#include "runtime/Form.h"

class ShowCrdForm : public rt::Form {
    Q_OBJECT
public:
    static constexpr const char* Name = "ShowCrdForm";
    ShowCrdForm();
    void Form_KeyPress(int& KeyAscii) override;
    rt::PictureBox* crdPict = nullptr;
};

// Shows `fileName`, a bare name in the game's directory, in the viewer:
// modally (Show 1) when `modal`, beside the wizard (plain Show) otherwise. An
// open viewer takes the new image and comes to the front. An image that is
// missing or cannot be decoded gets a message, and no viewer opens.
void showCardImage(const QString& fileName, bool modal);
