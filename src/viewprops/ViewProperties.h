// SPDX-License-Identifier: MIT
// The properties of a view: one dictionary of names and ViewProperty objects.
#pragma once

#include "automation/Dictionary.h"
#include "frame/Component.h"

namespace vlgs {

class VLGS_API ViewProperties final : public CountedComponent {
  public:
    static constexpr auto describe();
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    ViewProperties() = default;
    explicit ViewProperties(Ref<vlgs::Dictionary> dictionary) : dictionary_(std::move(dictionary)) {}
    /// Empties the dictionary, as `Clear` does, also while a caller still holds it.
    ~ViewProperties() override { Clear(); }

    /// Empties the dictionary, if there is one, and lets it go.
    void Clear() noexcept;

    /// The dictionary itself, whose keys are told apart by case and keep the order of their arrival; no
    /// object at first and after `Clear`. Callers may change it, and add properties of their own.
    const Ref<vlgs::Dictionary>& Dictionary() const noexcept { return dictionary_; }

    /// The dictionary as a property string, "" when there is none. Raises 11519 for what cannot be written
    /// (PropertyString.h).
    String PropertyString() const;

    /// Reads a property string into a new dictionary and clears the one there was. Every failure raises
    /// 11522, source "VlGeneralServices.ViewProperties.PropertyString (Let)", with the description of what
    /// went wrong as the extra text, and leaves the dictionary as it was.
    void SetPropertyString(const String& sValue);

  private:
    Ref<vlgs::Dictionary> dictionary_;
};

constexpr auto ViewProperties::describe() {
    return describeClass<ViewProperties>(
        {.name = "ViewProperties",
         .help = "The properties of a view",
         .number = eInterfaceID_ViewProperties,
         .classId = guid("2b08354f-62c9-4716-9418-19f31e5dd1ed"),
         .interfaceId = guid("8a46fa53-1961-4f3f-9740-02261a6a5222")},
        identity(), method<&ViewProperties::Clear>(1, "Clear", "Empties the dictionary and lets it go"),
        get<&ViewProperties::Dictionary>(2, "Dictionary", "The properties by name"),
        get<&ViewProperties::PropertyString>(3, "PropertyString", "The properties as text")
            .raises(eMsg_ErrorReadingViewPropertiesStringX,
                    "reading: the dictionary holds what cannot be written")
            .raises(eMsg_ErrorSettingPropertyStringX,
                    "writing: the text is no view property string; nothing changes"),
        put<&ViewProperties::SetPropertyString>(
            3, "PropertyString", "The properties as text",
            parameter("sValue", "a view property string, in place of all that was there")));
}

} // namespace vlgs
