// A window in which a person's work can be lost: closing it asks first.
#pragma once

#include "ui/form.h"

#include <QStringList>

namespace karvo
{

class EditorDialog : public Form
{
    Q_OBJECT

public:
    using Form::Form;

protected:
    // What the controls hold now stands elsewhere too: closing loses nothing of it. For the end of a
    // constructor, and after everything was saved.
    void nothingToLose() { kept_ = entries(); }

    // Whether a control holds something else than then. A window that keeps its work elsewhere says so
    // itself.
    virtual bool holdsWork() const { return entries() != kept_; }

    // Asks once where work would be lost: to keep editing, which closing the question means too, or to
    // discard it.
    bool mayClose() override;

private:
    QStringList entries() const;

    QStringList kept_;
    bool asking_ = false;
};

} // namespace karvo
