// SPDX-License-Identifier: MIT
// Objects that a C caller implements, and the events that they receive.
#include "automation/EventSource.h"
#include "capi/Boundary.h"

using namespace vlgs;
using namespace vlgs::capi;

namespace {

class ClientObject final : public Object {
  public:
    ClientObject(const vlgs_client& client, void* context) : client_(client), context_(context) {}

    DispatchId idOf(std::u16string_view name) const override {
        std::int32_t member = unknownMember;
        check(client_.id_of(context_, String(name).toUtf8().c_str(), &member));
        return member;
    }

    Variant invoke(DispatchId member, InvokeKind kind, const Arguments& arguments) override {
        if (!arguments.named.empty())
            raise(RunTimeError::NamedArgumentNotFound);
        Variant result;
        check(client_.invoke(context_, member, static_cast<std::uint32_t>(kind),
                             reinterpret_cast<vlgs_value*>(arguments.positional.data()),
                             arguments.positional.size(), reinterpret_cast<vlgs_value*>(&result)));
        return result;
    }

  private:
    ~ClientObject() override { client_.release(context_); }
    static void check(int status) {
        if (status != VLGS_DONE)
            raiseKeptError();
    }

    const vlgs_client& client_;
    void* context_;
};

EventSource& sourceOf(vlgs_object* object) {
    auto* source = dynamic_cast<EventSource*>(held(object).get());
    if (!source)
        raise(RunTimeError::NoSuchEvents);
    return *source;
}

} // namespace

int vlgs_object_new(const vlgs_client* client, void* context, vlgs_object** out) {
    return guarded([&] { *out = give(make<ClientObject>(*client, context)); });
}

int vlgs_connect(vlgs_object* source, vlgs_object* sink, int32_t* connection) {
    return guarded([&] { *connection = sourceOf(source).connect(held(sink)); });
}

int vlgs_disconnect(vlgs_object* source, int32_t connection) {
    return guarded([&] { sourceOf(source).disconnect(connection); });
}
