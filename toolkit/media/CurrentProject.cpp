#include "toolkit/media/CurrentProject.h"

#include "toolkit/support/CriticalSection.h"

#include <map>
#include <vector>

namespace Cv {
namespace {

struct ProjectSettings {
    FrameRate frameRate = CurrentProject::defaultFrameRate();
    OutputFormat::Details outputFormat = CurrentProject::defaultOutputImageFormat();
};

struct ProjectTable {
    CriticalSection lock;
    std::map<int, ProjectSettings> projects;
};

ProjectTable& table()
{
    static ProjectTable instance;
    return instance;
}

ProjectSettings readSettings(int project)
{
    ProjectTable& t = table();
    CriticalSection::Lock hold(t.lock);
    auto found = t.projects.find(project);
    return found == t.projects.end() ? ProjectSettings {} : found->second;
}

// Listeners are told after the lock is left, so a listener may read or set the project again.
void announce(const char* message, int project) { CurrentProject::getNotifier().issueNotification(NotifyMsg(message), project); }

} // namespace

FrameRate CurrentProject::defaultFrameRate() { return FrameRate::Fps25; }

OutputFormat::Details CurrentProject::defaultOutputImageFormat()
{
    // The 1920x1080 raster of the digital video format catalogue (UID 22), 50 fields a second.
    return OutputFormat::Details(22, OutputFormat::Type::HD1080i, { 1920, 1080 }, FrameRate::Fps25,
        { OutputFormat::ScanMode::InterlacedUpperFieldFirst }, OutputFormat::ColourEncoding::Rec709, L"1080i 50",
        L"HD 1080i 50 (1920x1080)");
}

FrameRate CurrentProject::getFrameRate(int project) { return readSettings(project).frameRate; }

OutputFormat::Details CurrentProject::getOutputImageFormat(int project) { return readSettings(project).outputFormat; }

void CurrentProject::setFrameRate(FrameRate rate, int project)
{
    {
        ProjectTable& t = table();
        CriticalSection::Lock hold(t.lock);
        FrameRate& stored = t.projects[project].frameRate;
        if (stored == rate)
            return;
        stored = rate;
    }
    announce(frameRateChangedMsg, project);
}

void CurrentProject::setOutputImageFormat(const OutputFormat::Details& format, int project)
{
    {
        ProjectTable& t = table();
        CriticalSection::Lock hold(t.lock);
        OutputFormat::Details& stored = t.projects[project].outputFormat;
        if (stored == format)
            return;
        stored = format;
    }
    announce(outputImageFormatChangedMsg, project);
}

void CurrentProject::resetToDefaults()
{
    std::vector<std::pair<const char*, int>> changes;
    {
        ProjectTable& t = table();
        CriticalSection::Lock hold(t.lock);
        const ProjectSettings defaults;
        for (const auto& [project, settings] : t.projects) {
            if (settings.frameRate != defaults.frameRate)
                changes.emplace_back(frameRateChangedMsg, project);
            if (!(settings.outputFormat == defaults.outputFormat))
                changes.emplace_back(outputImageFormatChangedMsg, project);
        }
        t.projects.clear();
    }
    for (const auto& [message, project] : changes)
        announce(message, project);
}

Notifier& CurrentProject::getNotifier()
{
    static Notifier notifier;
    return notifier;
}

} // namespace Cv
