// SPDX-License-Identifier: MIT
// The tables of all classes of the component and of the run time's classes that it hands out.
#include "library/ClassList.h"

#include "com/DictionaryTable.h"
#include "com/Face.h"
#include "com/Thunks.h"

#include <algorithm>
#include <vector>

namespace vlgs::com {

namespace {

template <class T>
ClassFace faceFor() {
    return {&T::description(), interfaceOf<T>, VtableOf<T>::entries.data()};
}
template <>
ClassFace faceFor<Dictionary>() {
    return {&Dictionary::description(), dictionaryInterface, dictionaryTable};
}

template <class... T>
void append(std::vector<ClassFace>& faces, TypeList<T...>) {
    (faces.push_back(faceFor<T>()), ...);
}

/// All faces, ordered by description.
const std::vector<ClassFace>& allFaces() {
    static const auto faces = [] {
        std::vector<ClassFace> result;
        append(result, Classes{});
        append(result, RunTimeClasses{});
        std::ranges::sort(result, {}, &ClassFace::info);
        return result;
    }();
    return faces;
}

} // namespace

const ClassFace& faceOf(const ClassInfo* info) noexcept {
    static const ClassFace plain{nullptr, IID_IDispatch, dispatchTable};
    const auto& faces = allFaces();
    const auto found = std::ranges::lower_bound(faces, info, {}, &ClassFace::info);
    return found != faces.end() && found->info == info ? *found : plain;
}

} // namespace vlgs::com
