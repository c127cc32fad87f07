// The two DCC addresses of the vehicle: entered, checked, and shown as CVs before they are written.
#pragma once

#include "editors/dcc_addresses.h"
#include "editors/forms/address_window.h"
#include "program/prompts.h"

#include <array>

class QRadioButton;

namespace karvo
{

class DCC_Adresse final : public AddressWindow
{
    Q_OBJECT

public:
    DCC_Adresse(const CvSet& set, Prompts& prompts, const LanguageTables& texts, QWidget* parent = nullptr);

protected:
    bool holdsWork() const override;
    void showPlan() override;
    void write() override;

private:
    // What both fields hold in one form.
    struct Fields {
        QString first;
        QString second;
        bool operator==(const Fields&) const = default;
    };

    void build(std::optional<bool> secondAnswers);
    void showForm();
    TypedAddresses typed() const;
    Fields fieldsOf(AddressForm form) const;

    const CvSet& set_;
    Prompts& prompts_;
    QRadioButton* shortForm_;
    QRadioButton* longForm_;
    AddressRow first_{};
    AddressRow second_{};
    QCheckBox* secondAnswers_ = nullptr; // nothing where the model has no such switch
    Fields otherForm_;                   // what the form that is not shown holds
};

} // namespace karvo
