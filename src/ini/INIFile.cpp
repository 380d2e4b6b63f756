// SPDX-License-Identifier: MIT
#include "ini/INIFile.h"

#include "automation/Convert.h"
#include "base/Text.h"
#include "frame/Errors.h"
#include "frame/SharedState.h"
#include "ini/Buffer.h"
#include "ini/FreshSections.h"
#include "ini/INIText.h"
#include "ini/PathParts.h"
#include "platform/FileHold.h"
#include "platform/Files.h"
#include "platform/Volumes.h"

#include <limits>

namespace vlgs {

namespace {

// What an index names among members that there may be none of.
template <class Index>
Property* propertyIn(const Ref<Collection>& members, const Index& index) {
    return members ? members->property(index) : nullptr;
}
Collection* keysOf(const Property* section) {
    return section ? objectIn<Collection>(&section->value()) : nullptr;
}

// The keys of a section: as they were read, or in a collection, or nowhere.
struct SectionView {
    const FreshKeys* fresh = nullptr;
    Collection* keys = nullptr;
};

SectionView sectionOf(Collection* sections, const String& name) {
    const Property* section = nullptr;
    if (const auto* fresh = sections ? sections->freshSections() : nullptr) {
        const auto found = fresh->find(name.view());
        if (found == FreshSections::none)
            return {};
        section = fresh->knownObject(found);
        if (!section)
            return {&fresh->keys(found), nullptr};
    } else if (sections) {
        section = sections->property(name.view());
    }
    Collection* keys = keysOf(section);
    return {keys ? keys->freshKeys() : nullptr, keys};
}

// The text of a key, "" when there is none of its value.
String textOf(const Property& key) {
    if (key.value().isString())
        return key.value().text();
    try {
        return toText(key.value());
    } catch (const Error&) {
        return {};
    }
}

void requireKeyName(const String& name) {
    if (name.empty())
        raiseMessage(u"VlGeneralServices.INIFile.CreateKey", eMsg_KeyNameCannotBeBlank);
}

} // namespace

const ClassInfo& INIFile::description() {
    return classInfoOf<INIFile>();
}

INIFile::INIFile() : hold_(std::make_unique<FileHold>()) {
    AddInstance();
}

INIFile::~INIFile() {
    if (isOfThisThread())
        ReleaseInstance(); // the count is the thread's
    // A locked file is deleted before it is unlocked, so that nobody who just looks at it keeps it there.
    const bool deleted = delayedDelete_ && hold_->held() && hold_->releaseDeleting(FullPath());
    Unlock();
    if (delayedDelete_ && !deleted)
        Delete();
    Clear();
}

String INIFile::FileTypeName() const {
    switch (fileType_) {
    case eINI_VLS:
        return u"Corvane Project Information File (VLS)";
    case eINI_INI:
        return u"Standard INI File";
    case eINI_VLL:
        return u"Corvane Database Link File (VLL)";
    default:
        return u"Unknown";
    }
}

String INIFile::FullPath() const {
    return concat(directory_, separatorAfter(directory_), filename_);
}

void INIFile::SetFullPath(const String& sPath) {
    const String path = libraryPath(sPath);
    directory_ = directoryPart(path);
    filename_ = filePart(path);
}

Ref<Collection> INIFile::Sections() {
    if (!sections_)
        sections_ = make<Collection>();
    return sections_;
}

Ref<Property> INIFile::Section(const Variant& vSection) const {
    return Ref<Property>(propertyIn(sections_, vSection));
}

Ref<Property> INIFile::Key(const Variant& vSection, const Variant& vKey) const {
    auto* keys = keysOf(propertyIn(sections_, vSection));
    return Ref<Property>(keys ? keys->property(vKey) : nullptr);
}

String INIFile::KeyValue(const String& sSection, const String& sKey) const {
    const SectionView section = sectionOf(sections_.get(), sSection);
    if (section.fresh) {
        const auto found = section.fresh->find(sKey.view());
        if (found == FreshKeys::none)
            return {};
        const Property* key = section.fresh->knownObject(found);
        return key ? textOf(*key) : section.fresh->value(found).toString();
    }
    const Property* key = section.keys ? section.keys->property(sKey.view()) : nullptr;
    return key ? textOf(*key) : String();
}

Ref<Collection> INIFile::SectionKeys(const Variant& vSection) const {
    return Ref<Collection>(keysOf(propertyIn(sections_, vSection)));
}

Ref<Property> INIFile::CreateSection(const String& sSectionName, const Variant& Before,
                                     const Variant& After) {
    if (sSectionName.empty())
        raiseMessage(u"VlGeneralServices.INIFile.CreateSection", eMsg_SectionNameCannotBeBlank);
    if (auto* found = propertyIn(sections_, sSectionName.view()))
        return Ref<Property>(found);
    if (auto* fresh =
            Before.isMissing() && After.isMissing() && sections_ ? sections_->freshSections() : nullptr)
        return Ref<Property>(&fresh->object(fresh->findOrAdd(sSectionName.view())));
    auto section = make<Property>();
    section->SetName(sSectionName);
    section->SetValue(make<Collection>());
    const auto failure = Sections()->Add(section, sSectionName, Before, After);
    if (failure > 0)
        throw Error(failure, String(), Error::descriptionOf(failure));
    return section;
}

Ref<Property> INIFile::CreateKey(const Variant& vSection, const String& sKeyName, const String& sKeyValue,
                                 const Variant& Before, const Variant& After) {
    requireKeyName(sKeyName);
    auto section = Section(vSection);
    if (!section)
        section = CreateSection(toText(vSection), missing, missing);
    return createKeyIn(keyPlaceOf(*section), sKeyName, sKeyValue, Before, After);
}

FreshKeys* INIFile::freshSection(StoredText name, const Ref<TextArena>& arena) {
    auto* sections = Sections()->freshSectionsIn(arena);
    if (!sections)
        return nullptr;
    const auto section = sections->findOrAdd(name);
    return sections->knownObject(section) ? nullptr : &sections->keys(section);
}

INIFile::KeyPlace INIFile::keyPlaceOf(const Property& section) const {
    return {Ref<Collection>(keysOf(propertyIn(sections_, section.name().view()))),
            Ref<Collection>(keysOf(&section))};
}

Ref<Property> INIFile::createKeyIn(const KeyPlace& place, String name, String value, const Variant& before,
                                   const Variant& after) {
    requireKeyName(name);
    // Most keys are new, so adding comes first where a key that is there would refuse it.
    const bool refusesKnown = place.lookUp == place.add && before.isMissing() && after.isMissing();
    if (!refusesKnown) {
        if (auto* found = propertyIn(place.lookUp, name.view())) {
            found->LetValue(std::move(value));
            return Ref<Property>(found);
        }
    }
    if (!place.add) // a caller's own text stands in the place of a section's keys
        raise(RunTimeError::TypeMismatch);
    if (auto* fresh = refusesKnown ? place.add->freshKeys() : nullptr) {
        const auto known = fresh->set(name.view(), value.view());
        const auto key = known == FreshKeys::none ? fresh->at(fresh->count() - 1) : known;
        return Ref<Property>(place.add->objectOf(key));
    }
    auto key = make<Property>();
    key->SetName(name);
    key->LetValue(value);
    const auto failure = place.add->Store()->add(key, std::move(name), before, after);
    if (!refusesKnown || !failure)
        return key;
    auto* found = place.add->property(key->name().view());
    if (!found)
        return key;
    found->LetValue(std::move(value));
    return Ref<Property>(found);
}

Ref<INIFile> INIFile::Clone(const String& sNewFilename) const {
    auto clone = make<INIFile>();
    clone->SetSections(sections_);
    clone->SetLossyOrigin(lossyOrigin_);
    clone->SetFileType(fileType_);
    clone->SetFullPath(sNewFilename);
    clone->SetDelayedDelete(delayedDelete_);
    return clone;
}

void INIFile::Clear() {
    sections_ = nullptr;
    lossyOrigin_ = {};
}

bool INIFile::Save(const String& sSaveAs) {
    const bool wasLocked = Locked();
    SetLocked(false);
    g_SaveINIFile(*this, sSaveAs);
    SetLocked(wasLocked);
    return true;
}

Variant INIFile::GetStream(bool bUseCRLF) const {
    return GetStream2(eStream_String, bUseCRLF ? u"\r\n" : u"");
}

Variant INIFile::GetStream2(enumStreamTypes eStreamType, const String& sDelimiter) const {
    return g_GetStreamFromINI(*this, eStreamType, sDelimiter);
}

void INIFile::PutStream(const Variant& vData) {
    PutStream2(vData, eStream_String, u"\r\n", false);
}

void INIFile::PutStream2(const Variant& vData, enumStreamTypes, const String& sDelimiter, bool bCompact) {
    const auto buffer = make<Buffer>();
    buffer->SetDelimiter(sDelimiter);
    buffer->SetCompact(bCompact);
    buffer->PutData(vData, String());
    const String whole = buffer->text();
    buffer->Clear();
    readLines(*this, splitIgnoringCase(whole, sDelimiter));
}

void INIFile::CreateLocked() {
    *hold_ = FileHold::create(FullPath(), encodedText(*this).view());
}

bool INIFile::Delete() {
    try {
        SetLocked(false);
        deleteFile(FullPath());
        return true;
    } catch (...) {
        return false;
    }
}

bool INIFile::DeleteSection(const Variant& vSection) {
    return sections_ && sections_->Remove(vSection) == 0;
}

bool INIFile::DeleteKey(const String& vSection, const Variant& vKey) {
    auto* keys = keysOf(propertyIn(sections_, vSection.view()));
    return keys && keys->Remove(vKey) == 0;
}

std::int32_t INIFile::KeyCount(const Variant& vSection) const {
    const auto* keys = keysOf(propertyIn(sections_, vSection));
    return keys ? keys->Count() : 0;
}

std::int32_t INIFile::Count() const {
    if (!sections_)
        raise(RunTimeError::ObjectVariableNotSet);
    return sections_->Count();
}

std::int32_t INIFile::TotalKeyCount() {
    const auto sections = Sections();
    std::int64_t total = 0;
    for (std::int32_t position = 1; position <= sections->Count(); ++position) {
        const auto* fresh = sections->freshSections();
        const auto place = fresh ? fresh->at(static_cast<std::uint32_t>(position) - 1) : FreshSections::none;
        if (fresh && !fresh->knownObject(place)) {
            total += fresh->keys(place).count();
            continue;
        }
        const auto* section = sections->property(position);
        if (!section)
            raise(RunTimeError::TypeMismatch);
        if (const auto* keys = keysOf(section))
            total += keys->Count();
    }
    if (total > std::numeric_limits<std::int32_t>::max())
        raise(RunTimeError::Overflow);
    return static_cast<std::int32_t>(total);
}

bool INIFile::Locked() const noexcept {
    return hold_->held();
}

void INIFile::Unlock() noexcept {
    hold_->release();
}

void INIFile::SetLocked(bool bLocked) {
    if (!bLocked)
        return Unlock();
    hold_->abandon();
    try {
        *hold_ = FileHold::denyingWriters(FullPath());
    } catch (...) {
        hold_->release(); // the property reads False, which is all that a caller is told
    }
}

} // namespace vlgs
