#pragma once

/// The words of the reference. What stands between double braces is put in from the model: see Reference.cpp.
namespace Protocol::Markdown {

constexpr char kProse[] = R"md(# The protocol of panels and host, version {{version}}

Made from the library by `asset-connector protocol`; `asset-connector protocol --json` prints the same as data. Schemas
of both kinds of texts and types for JavaScript, made from the same model, are installed in `share/asset-connector`.
What texts look like in general is in [message-format.md](message-format.md).

- [How panels and host talk](#how-panels-and-host-talk)
- [Events at a glance](#events-at-a-glance)
- [Requests](#requests), [notifications](#notifications), each with an example
- [Station messages](#station-messages)
- [Elements](#elements) and [values](#values)

## How panels and host talk

A panel raises a *request*: the identifier of an event and an XML text with the root `{{requestRoot}}`. The host answers
and informs by *notifications*: again an identifier and a text, with the root `{{notificationRoot}}`. There are
{{requests}} requests and {{notifications}} notifications.

How a page raises a request and hears notifications is a matter of the browser that the host embeds; this page is about
what they say.

**Who hears what.** Every notification reaches every panel. The library connector names in
[`browserID`](#element-browserID) the panel that the host calls the current one when it sends, and `MediaCollection` in
{{linksToOther}}; the media collection connector always writes `MediaCollection`. In {{linksRepeated}} both repeat what the
request said. So a panel of the media collection says `MediaCollection` in its requests, too, and every
panel knows its answers best by `msgID`. Both connectors hear every request. Of the {{handled}} that a connector handles,
{{handledByBoth}} are known to both, and each connector that lives carries them out: with both, the host is asked twice,
and two answers may come, with the same identifiers. {{handledByLibrary}} are known to the library connector alone,
{{handledByMediaCollection}} to that of the media collection, {{unhandled}} to none.

**What becomes of a request.** A text that does not parse is dropped, and so is one that lacks what its request needs;
nobody says so. Try it with `asset-connector check FILE --event IDENTIFIER`. Elements that a request does not read do no
harm and no good.

**Waiting for an answer.** Give each request a fresh `msgID`, and a `taskID` for the work that it begins; only a cancel
says those of the request that it ends. An answer repeats both. Some answers come at once, from the connector; some when
the host reports, with the identifiers that the host passes on. {{leftToHost}} requests that a connector handles belong by
their names to notifications that this library never sends: {{linksLeftToHost}}. Whether the host sends them, and with
what, is its own affair: wait with a time limit. Nobody answers {{linksUnanswered}}: do not wait. In all, {{neverSent}}
notifications are not sent by this library, {{neverSentStatus}} of them named `...Status`.

**One flag, several names.** The library connector remembers which of `ImportXMP` and `ReadXMPFromDisk` it carried out
last, whoever raised it, and names what it sends by that: what answers `ImportXMP` may come as `ReadXMPFromDiskStatus`,
and the reverse, and what was imported as `ImportXMPStatus` or `ReadRoughCutFromDiskStatus`. Take either, by its `msgID`.

**Following work.** Progress has the `taskID` and `msgID` of its request, as far as the host passes them on. What an ingest
reports has its `taskID`; its `msgID` is another one, or the same as `taskID`, as the tables say. Whether a cancelled task
is still answered, with `Canceled`, is up to the host.

### Decoded notifications

Of some notifications one layer of encoding is taken off before they are sent: {{linksDecoded}}, not at both connectors in
every case. The markers around an XMP packet are a real CDATA section there, and metadata is encoded once. A `<` or `&` in
a text is bare, so such a notification may not be well-formed: read it forgivingly.

## Events at a glance

{{glance}}
## Requests

What no connector handles is described by its name alone: what it does is up to the host.

{{requestList}}
## Notifications

What this library never sends is described by its name alone, and its example has nothing but the header: the rest is up
to the host.

{{notificationList}}
## Station messages

What the media collection connector tells components of the host. The hash of the type name tells messages apart.
`record:Message` is the message record; a `map` is an array of pairs and a set a `list`, as in the JSON of records. The
two maps of `InsertDynamicColumnsMessage` are the new names and the previous ones.

{{stationMessages}}
## Elements

In the order in which notifications hold them; in a request their order is free. *in*: read in requests; *out*: written in
notifications, where it is not empty or not set. `element@attribute` is an attribute; an element that has nothing but the
attribute has no row of its own. Where an element may stand once and stands twice, the first one counts. *Missing*,
*Empty* and *Malformed* say what the host then reads.

{{elements}}
## Values

{{forms}})md";

}  // namespace Protocol::Markdown
