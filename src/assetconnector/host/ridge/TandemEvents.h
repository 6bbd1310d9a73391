#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/UTF16String.h"
#include "assetconnector/host/kiln/Message.h"

#include <utility>

/// The host's station messages that connectors react to.
namespace Ridge {

/// A panel raised a request: its type (an identifier of the event catalogue) and its XML text.
class TandemEvent : public Kiln::MessageImpl<TandemEvent>
{
public:
    AC_CONSTANT static constexpr char kTypeName[] = ".?AVTandemEvent@Ridge@@";

    TandemEvent(UTF16String type, UTF16String data) : mType(std::move(type)), mData(std::move(data)) {}

    const UTF16String& GetType() const noexcept { return mType; }
    const UTF16String& GetData() const noexcept { return mData; }

private:
    const UTF16String mType;
    const UTF16String mData;
};

/// Asks for the registration of every panel request.
class AddTandemListenerEvent : public Kiln::MessageImpl<AddTandemListenerEvent>
{
public:
    AC_CONSTANT static constexpr char kTypeName[] = ".?AVAddTandemListenerEvent@Ridge@@";
};

/// Asks for the end of that registration.
class RemoveTandemListenerEvent : public Kiln::MessageImpl<RemoveTandemListenerEvent>
{
public:
    AC_CONSTANT static constexpr char kTypeName[] = ".?AVRemoveTandemListenerEvent@Ridge@@";
};

}  // namespace Ridge
