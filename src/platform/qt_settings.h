#pragma once

#include "program/settings.h"

#include <QSettings>

#include <memory>

namespace karvo
{

// The user's settings: on Windows in the registry, elsewhere in Karvo/Karvo.conf of the configuration folder.
// Written to disk by the event loop, at the latest when the object goes.
class QtSettings : public Settings
{
public:
    // `iniFile`: stored there instead, in INI format; empty: as said.
    explicit QtSettings(const QString& iniFile = {});

    std::optional<Text> get(std::string_view section, std::string_view key) const override;
    void save(std::string_view section, std::string_view key, const Text& value) override;
    std::optional<Text> unwritablePlace() override;

private:
    std::unique_ptr<QSettings> store_;
};

} // namespace karvo
