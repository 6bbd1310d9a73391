#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/UTF16String.h"

/// The constants of messages. The texts are built when the library is loaded and stay until it is unloaded.
namespace AC {

/// Tri-states, and "not set" for `percentage`.
AC_API extern const int kACMessage_True;
AC_API extern const int kACMessage_False;
AC_API extern const int kACMessage_Undefine;

/// Result names, as panels read them.
AC_API extern const UTF16String kACMessage_ResultOK;
AC_API extern const UTF16String kACMessage_ResultFailure;
AC_API extern const UTF16String kACMessage_ResultIgnore;
AC_API extern const UTF16String kACMessage_ResultUserCanceled;
AC_API extern const UTF16String kACMessage_ResultAccessDenied;
AC_API extern const UTF16String kACMessage_ResultDirty;
AC_API extern const UTF16String kACMessage_ResultUndirty;

/// Types of a reported event.
AC_API extern const UTF16String kACMessage_TypeInfo;
AC_API extern const UTF16String kACMessage_TypeWarn;
AC_API extern const UTF16String kACMessage_TypeError;

/// Root elements of panel requests and of notifications.
AC_API extern const UTF16String kMessageRoot;
AC_API extern const UTF16String kNotificationRoot;

/// The browser id of messages for the media collection panel.
AC_API extern const UTF16String kNativeBrowserID;

/// Property names for the host's own use.
AC_API extern const UTF16String kName;
AC_API extern const UTF16String kDuration;
AC_API extern const UTF16String kDropFrame;
AC_API extern const UTF16String kVideoFrameRate;
AC_API extern const UTF16String kMediaStart;
AC_API extern const UTF16String kIsAudioOnly;
AC_API extern const UTF16String kIsStillImage;
AC_API extern const UTF16String kCustomMetadataContent;

}  // namespace AC
