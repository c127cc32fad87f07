#include "shell/options.h"

#include "simulator/decoder.h"

namespace karvo
{

namespace
{

// The option's value: behind "=", or the next argument. Nothing where neither is there.
class Arguments
{
public:
    explicit Arguments(const std::vector<std::string>& arguments) : arguments_(arguments) {}

    bool next()
    {
        if (at_ == arguments_.size())
            return false;
        name_ = arguments_[at_++];
        attached_.reset();
        const auto equals = name_.find('=');
        if (name_.starts_with("--") && equals != std::string::npos) {
            attached_ = name_.substr(equals + 1);
            name_.resize(equals);
        }
        return true;
    }

    const std::string& name() const { return name_; }
    bool hasAttachedValue() const { return attached_.has_value(); }

    std::optional<std::string> value()
    {
        if (attached_ || at_ == arguments_.size())
            return attached_;
        return arguments_[at_++];
    }

private:
    const std::vector<std::string>& arguments_;
    std::size_t at_ = 0;
    std::string name_;
    std::optional<std::string> attached_;
};

bool* flagOf(Options& options, const std::string& name)
{
    if (name == "--help" || name == "-h")
        return &options.help;
    if (name == "--version" || name == "-v")
        return &options.version;
    return name == "--read" ? &options.read : nullptr;
}

bool takesValue(const std::string& name)
{
    return name == "--simulate" || name == "--map-port" || name == "--program-folder" ||
           name == "--settings" || name == "--language";
}

void takeValue(Options& options, const std::string& name, const std::string& value)
{
    if (name == "--map-port")
        options.mapPorts.push_back(value);
    else if (name == "--language")
        options.language = value;
    else if (name == "--settings")
        options.settingsFile = value;
    else
        (name == "--simulate" ? options.simulate : options.programFolder) = value;
}

} // namespace

Options parseOptions(const std::vector<std::string>& arguments)
{
    Options options;
    Arguments rest(arguments);
    while (options.error.empty() && rest.next()) {
        const std::string name = rest.name();
        if (bool* const flag = flagOf(options, name)) {
            *flag = true;
            if (rest.hasAttachedValue())
                options.error = "option " + name + " takes no value";
        } else if (takesValue(name)) {
            const auto value = rest.value();
            if (value && !value->empty())
                takeValue(options, name, *value);
            else
                options.error = "option " + name + " needs a value";
        } else if (name.starts_with("--")) {
            options.error = "unknown option " + name;
        } else {
            options.others.push_back(name);
        }
    }
    return options;
}

std::string helpText()
{
    std::string models;
    std::size_t column = 0;
    for (const std::string& name : sim::decoderNames()) {
        if (column == 0 || column + name.size() > 70) {
            models += "\n   ";
            column = 3;
        }
        models += " " + name;
        column += name.size() + 1;
    }
    return "Usage: karvo [options]\n"
           "Reads the CVs of a Karvo vehicle, explains them and writes changes back.\n"
           "\n"
           "  --simulate MODEL        work with a simulated programming interface and this decoder on it\n"
           "  --map-port COM5=DEVICE  the device behind a port's name, for this run; may be repeated\n"
           "  --language CODE         speak de, nl, en, es or fr from now on\n"
           "  --program-folder DIR    where the text files lie; else beside the program\n"
           "  --settings FILE         keep language, port and all else in this file, not in your own "
           "settings\n"
           "  --read                  read the decoder as soon as the window is there\n"
           "  --help                  show this text\n"
           "  --version               show the version\n"
           "\n"
           "Models:" +
           models + "\n";
}

} // namespace karvo
