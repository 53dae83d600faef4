#include "tutorials/TutorialsManager.h"

#include "toolkit/support/CookieJar.h"
#include "toolkit/support/FileUtils.h"
#include "toolkit/support/OS.h"

#include <algorithm>

namespace {

constexpr const wchar_t* kFolderName = L"Tutorials";
constexpr const wchar_t* kFilePattern = L"*.CvTutorial";
constexpr const wchar_t* kFileExtension = L".CvTutorial";

} // namespace

TutorialsManager& TutorialsManager::instance()
{
    static TutorialsManager manager;
    return manager;
}

LightweightString<wchar_t> TutorialsManager::getLocation()
{
    return joinPaths(OS()->fileManager().getBaseDataDirectory(), kFolderName);
}

TutorialsManager::TutorialsManager()
{
    loadAll();
}

TutorialsManager::TutorialsManager(SeparateCatalogue)
{
    loadAll();
}

TutorialsManager::~TutorialsManager() = default;

void TutorialsManager::loadAll()
{
    const LightweightString<wchar_t> folder = getLocation();
    for (const LightweightString<wchar_t>& name : OS()->fileManager().listFiles(joinPaths(folder, kFilePattern))) {
        auto tutorial = Cv::make<Tutorial>(joinPaths(folder, name));
        // A file that did not read, or that could not be listed under a category, is left out quietly.
        if (!tutorial->getCategory().empty() && !tutorial->getName().empty())
            m_tutorials.push_back(std::move(tutorial));
    }
    buildCategories();
}

void TutorialsManager::buildCategories()
{
    m_categories.clear();
    for (const Cv::Ptr<Tutorial>& tutorial : m_tutorials)
        m_categories.insert(tutorial->getCategory());
}

std::vector<Cv::Ptr<Tutorial>> TutorialsManager::getCategoryContents(const LightweightString<wchar_t>& category) const
{
    std::vector<Cv::Ptr<Tutorial>> contents;
    for (const Cv::Ptr<Tutorial>& tutorial : m_tutorials)
        if (tutorial->getCategory() == category)
            contents.push_back(tutorial);
    return contents;
}

Cv::Ptr<Tutorial> TutorialsManager::getTutorial(const LightweightString<wchar_t>& id) const
{
    for (const Cv::Ptr<Tutorial>& tutorial : m_tutorials)
        if (tutorial->getID() == id)
            return tutorial;
    return {};
}

Cv::Ptr<Tutorial> TutorialsManager::createTutorial(
    const LightweightString<wchar_t>& name, const LightweightString<wchar_t>& category)
{
    const Cookie cookie = CookieJar::instance().makeCookie(kCookieType, 0, 0);
    auto tutorial = Cv::make<Tutorial>();
    m_tutorials.push_back(tutorial);
    tutorial->setName(name);
    tutorial->setCategory(category);
    // The file exists from the start, so the tutorial is found again after a restart even if never saved.
    tutorial->save(joinPaths(getLocation(), cookie.asWString() + kFileExtension));
    m_categories.insert(category);
    issueNotification(NotifyMsg(tutorial), eTutorialCreated);
    return tutorial;
}

void TutorialsManager::save(const Cv::Ptr<Tutorial>& tutorial)
{
    if (!tutorial)
        return;
    tutorial->save(tutorial->getFile());
    issueNotification(NotifyMsg(tutorial), eTutorialSaved);
}

void TutorialsManager::deleteTutorial(const Cv::Ptr<Tutorial>& tutorial)
{
    if (!tutorial)
        return;
    const auto found = std::find(m_tutorials.begin(), m_tutorials.end(), tutorial);
    if (found != m_tutorials.end()) {
        m_tutorials.erase(found);
        OS()->fileManager().deleteFile(tutorial->getFile());
        buildCategories();
    }
    issueNotification(NotifyMsg(tutorial), eTutorialDeleted);
}

Cv::Ptr<Tutorial> TutorialsManager::clone(const Cv::Ptr<Tutorial>& tutorial) const
{
    if (!tutorial)
        return {};
    return Cv::make<Tutorial>(*tutorial);
}
