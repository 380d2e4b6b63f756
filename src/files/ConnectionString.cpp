// SPDX-License-Identifier: MIT
#include "files/ConnectionString.h"

#include "automation/Convert.h"
#include "base/CaseFold.h"
#include "base/Text.h"
#include "files/ProjectFiles.h"
#include "frame/Errors.h"
#include "ini/PathParts.h"
#include "platform/Files.h"

#include <algorithm>
#include <string>

namespace vlgs {

namespace {

constexpr std::u16string_view odbcSection = u"ODBC";
constexpr std::u16string_view accessDriver = u"Microsoft Access Driver (*.mdb)";

// The built-in default account; its password in the scrambled form, fixed for every installation.
constexpr std::u16string_view defaultUser = u"corvane admin";
constexpr std::u16string_view defaultScrambledPassword = u"q7#Tz!m4Kd&Wx9@Rb2^Lf6*Hc8~Vn3";
static_assert(defaultScrambledPassword.size() == 30);

// Settings for the data-access layer, which are not passed on.
constexpr std::u16string_view ownSettings[] = {u"StripTrailingZero", u"GuessTheColDef"};

class Pairs {
  public:
    void add(std::u16string_view name, std::u16string_view value) {
        text_.append(name).append(u"=").append(value).append(u";");
    }
    void addUnlessEmpty(std::u16string_view name, std::u16string_view value) {
        if (!value.empty())
            add(name, value);
    }
    bool contains(std::u16string_view text) const { return findIgnoringCase(text_, text) != text_.npos; }
    const std::u16string& text() const { return text_; }

  private:
    std::u16string text_;
};

template <class Visit>
void forEachKey(Collection* keys, Visit&& visit) {
    for (std::int32_t position = 1; keys && position <= keys->Count(); ++position)
        if (const auto* key = keys->property(position))
            visit(key->name(), toText(key->value()));
}

// Adds the pairs of "ODBC" and of "DATABASE ACCOUNT"; True when the operating system's login is used.
bool addFilePairs(Pairs& pairs, const INIFile& document) {
    bool isTrusted = false;
    forEachKey(document.SectionKeys(odbcSection).get(), [&](const String& name, const String& value) {
        const auto isName = [&](std::u16string_view other) { return equalIgnoringCase(name, other); };
        if (std::ranges::none_of(ownSettings, isName))
            pairs.add(name, value);
        if (isName(u"Trusted_Connection") && value == u"Yes")
            isTrusted = true;
    });
    forEachKey(document.SectionKeys(u"DATABASE ACCOUNT").get(),
               [&](const String& name, const String& value) { pairs.add(name, value); });
    return isTrusted;
}

void addAccount(Pairs& pairs, const ConnectionRequest& request) {
    bool isEncrypted = false;
    if (!pairs.contains(u"UID=")) {
        const bool isDefault = request.user.empty();
        pairs.add(u"UID", isDefault ? defaultUser : request.user.view());
        pairs.add(u"PWD", isDefault ? defaultScrambledPassword : request.password.view());
        isEncrypted = isDefault || request.isEncrypted;
    }
    pairs.add(u"ENCRYPTED", isEncrypted ? u"True" : u"False");
}

// A document for a file that is there and cannot be read.
Ref<INIFile> accessDocument(const String& path) {
    auto document = g_CreateINIFile(path, eINI_VLS);
    document->CreateKey(u"Project", u"KEY", u"1", missing, missing);
    document->CreateKey(odbcSection, u"DRIVER", accessDriver, missing, missing);
    document->CreateKey(odbcSection, u"DBQ", path, missing, missing);
    return document;
}

} // namespace

void g_ValidateODBCSectionExists(Collection* sections, const String& name) {
    if (!sections || !sections->IsPresent(name))
        raiseMessage(u"VlGeneralServices.modFiles.g_ValidateODBCSectionExists", eMsg_ODBCSectionMissing);
}

String g_BuildConnectionString(const INIFile* document, const ConnectionRequest& request) {
    if (!document)
        return {};
    if (document->FileType() != eINI_VLL && document->FileType() != eINI_VLS)
        raiseMessage(u"g_BuildConnectionString", eMsg_NotAvailableOnNonVLSFileType);
    g_ValidateODBCSectionExists(document->sections(), odbcSection);

    Pairs pairs;
    const bool isTrusted = addFilePairs(pairs, *document);
    if (pairs.contains(accessDriver) && !pairs.contains(u"DBQ"))
        pairs.add(u"DBQ", concat(withoutExtension(document->FullPath()), u".MDB"));
    if (!isTrusted)
        addAccount(pairs, request);
    pairs.addUnlessEmpty(u"VLGUID", document->KeyValue(u"PROJECT", u"GUID"));
    pairs.addUnlessEmpty(u"VLPROJKEY", document->KeyValue(u"PROJECT", u"Key"));
    pairs.addUnlessEmpty(u"SCHEMATOKEN", request.schemaToken);
    pairs.add(u"SEQKEY", decimal(request.sequenceKey));
    return pairs.text();
}

String g_BuildConnectionStringFromPath(const String& sPath, const ConnectionRequest& request) {
    if (!fileExists(sPath))
        return {};
    Ref<INIFile> document;
    if (equalIgnoringCase(extensionPart(sPath), u"VLL"))
        document = g_RetrieveINIFile(sPath, eINI_VLL);
    else if (g_Is40VLSFile(sPath))
        document = g_RetrieveINIFile(sPath, eINI_VLS);
    else
        document = accessDocument(sPath);
    return g_BuildConnectionString(document.get(), request);
}

} // namespace vlgs
