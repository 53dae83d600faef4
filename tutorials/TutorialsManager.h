#pragma once
// The catalogue of tutorial files: every "*.CvTutorial" file in the "Tutorials" folder of the toolkit's data
// folder, read once when the catalogue is first used, and offered by category. Tutorials are shared: callers
// edit the same objects the catalogue holds, and changes reach the disk through save().
//
// Listeners registered with the catalogue (it is a Notifier) hear eTutorialCreated, eTutorialSaved and
// eTutorialDeleted, each with the tutorial attached to the NotifyMsg.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Notifier.h"
#include "toolkit/support/Ptr.h"
#include "tutorials/Tutorial.h"

#include <set>
#include <vector>

class TutorialsManager : public Notifier {
public:
    // Notification codes.
    enum : int {
        eTutorialCreated = 10,
        eTutorialSaved = 11,
        eTutorialDeleted = 12,
    };
    // The cookie type that names new tutorial files.
    static constexpr int kCookieType = 84;

    // The one catalogue of the process, read from disk on the first call (safe from any thread).
    static TutorialsManager& instance();
    // "<base data folder>/Tutorials", asked of the file manager on every call.
    static LightweightString<wchar_t> getLocation();

    // Plain copies of the list and the category set; the copy starts with no listeners.
    TutorialsManager(const TutorialsManager&) = default;
    TutorialsManager(TutorialsManager&&) = default;
    TutorialsManager& operator=(const TutorialsManager&) = default;
    TutorialsManager& operator=(TutorialsManager&&) = default;
    ~TutorialsManager() override;

    const std::set<LightweightString<wchar_t>>& getCategories() const { return m_categories; }
    // The tutorials of exactly this category (case matters), in catalogue order.
    std::vector<Cv::Ptr<Tutorial>> getCategoryContents(const LightweightString<wchar_t>& category) const;
    // The tutorial whose file name (without folder) is id; null when none.
    Cv::Ptr<Tutorial> getTutorial(const LightweightString<wchar_t>& id) const;
    const std::vector<Cv::Ptr<Tutorial>>& tutorials() const { return m_tutorials; }

    // Adds an empty tutorial, writes it at once to a new file with a unique name, and announces it.
    Cv::Ptr<Tutorial> createTutorial(const LightweightString<wchar_t>& name, const LightweightString<wchar_t>& category);
    // Writes the tutorial to its own file and announces it. A null tutorial does nothing.
    void save(const Cv::Ptr<Tutorial>& tutorial);
    // Drops the tutorial from the catalogue and deletes its file. The deletion is announced even for a
    // tutorial the catalogue did not hold, so that views showing it let go of it too.
    void deleteTutorial(const Cv::Ptr<Tutorial>& tutorial);
    // An independent copy (its phases are new objects) that is not in the catalogue, not saved and not
    // announced. It keeps the source's file: give it a new one before saving unless it is meant to replace
    // the source.
    Cv::Ptr<Tutorial> clone(const Cv::Ptr<Tutorial>& tutorial) const;

protected:
    // For tests and benchmarks: a catalogue of its own, read from getLocation() now, beside the shared one.
    struct SeparateCatalogue { };
    explicit TutorialsManager(SeparateCatalogue);

private:
    TutorialsManager();
    void loadAll();
    void buildCategories();

    std::vector<Cv::Ptr<Tutorial>> m_tutorials;
    std::set<LightweightString<wchar_t>> m_categories;
};
