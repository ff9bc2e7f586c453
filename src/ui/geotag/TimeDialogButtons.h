#pragma once

class QDialog;
class QDialogButtonBox;
class QPushButton;

// The buttons both time dialogs end with: CoolButtonHowToCalculate, which explains how to find a
// camera's error, CoolButtonProcess (returned, for the dialog to connect) and CoolButtonCancel,
// which closes without change.
QPushButton *AddTimeDialogButtons(QDialog *dialog, QDialogButtonBox *&box);
