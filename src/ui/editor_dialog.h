// A window in which a person's work can be lost: closing it asks first.
#pragma once

#include "language/language_tables.h"

#include <QDialog>
#include <QStringList>

namespace karvo
{

class EditorDialog : public QDialog
{
    Q_OBJECT

public:
    // `texts` outlives it.
    EditorDialog(const LanguageTables& texts, QWidget* parent);

    // What Escape, the button for cancelling and that of the frame come to. It asks once where work would be
    // lost: to keep editing, which closing the question means too, or to discard it.
    void reject() override;

protected:
    // What the fields and check boxes hold now stands elsewhere too: closing loses nothing of it. For the end
    // of a constructor, and after everything was saved.
    void nothingToLose() { kept_ = entries(); }

    // Whether a field or a check box holds something else than then. A window that keeps its work elsewhere
    // says so itself.
    virtual bool holdsWork() const { return entries() != kept_; }

private:
    QStringList entries() const;
    bool agreesToDiscard();

    const LanguageTables& texts_;
    QStringList kept_;
};

} // namespace karvo
