#pragma once
// FileFormatButton: a drop-down of the file types the editor writes for a usage, shown by their extensions
// ("AVI", "MOV", ...). The choice is remembered in the preferences under the button's key (when it has one),
// and the parent hears FileTypeChangedMsg. Without a remembered choice "AVI" is picked when offered.

#include "toolkit/media/Compression.h"
#include "toolkit/widgets/DropDownMenuButton.h"
#include "toolkit/widgets/TitledGlob.h"

class FileFormatButton : public DropDownMenuButton {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        InitArgs(Compression::eUsage use, LightweightString<char> key, uint16_t w, uint16_t h = 0, const Palette& pal = Palette())
            : GlobCreationInfo(w, h, pal)
            , usage(use)
            , prefKey(std::move(key))
        {
        }
        Compression::eUsage usage = Compression::VideoExport;
        LightweightString<char> prefKey;
    };

    explicit FileFormatButton(const InitArgs& args);
    FileFormatButton(Compression::eUsage usage, const LightweightString<char>& prefKey, const Palette& palette, double w,
        double h, Canvas* canvas = nullptr);
    FileFormatButton(const FileFormatButton&) = default;
    FileFormatButton(FileFormatButton&&) = default;
    FileFormatButton& operator=(const FileFormatButton&) = default;
    FileFormatButton& operator=(FileFormatButton&&) = default;

    // The chosen type's format ID ("quicktime"); empty when nothing is offered.
    LightweightString<char> getFileType() const;
    // Remembers the choice and tells the parent.
    void informOwner();

    static constexpr const char* FileTypeChangedMsg = "FileTypeChangedMsg";
    static constexpr const wchar_t* defaultFileType = L"AVI";

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;

private:
    void init(Compression::eUsage usage);

    LightweightString<char> m_prefKey;
};

// A FileFormatButton with a title at its left.
class TitledFileFormatButton : public TitledGlob<FileFormatButton> {
public:
    using TitledFileFormatButtonInitArgs = TitledGlob<FileFormatButton>::InitArgs;

    explicit TitledFileFormatButton(const TitledFileFormatButtonInitArgs& args);
    TitledFileFormatButton(Compression::eUsage usage, const LightweightString<char>& prefKey, uint16_t titleWidth,
        uint16_t width, const Palette& palette = Palette(), const UIString& title = UIString());
    TitledFileFormatButton(const TitledFileFormatButton&) = default;
    TitledFileFormatButton(TitledFileFormatButton&&) = default;
    TitledFileFormatButton& operator=(const TitledFileFormatButton&) = default;
    TitledFileFormatButton& operator=(TitledFileFormatButton&&) = default;

    FileFormatButton* getBtn() const { return widget(); }
};
