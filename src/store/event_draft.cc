/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/event_draft.h"

#include <algorithm>
#include <utility>

#include "support/text.h"

namespace velkor {

void EventDraft::Buffer::clear() noexcept {
  characters.clear();
  present = false;
}

void EventDraft::Buffer::append(std::string_view piece) noexcept {
  characters.append(piece);
  present = true;
}

void EventDraft::Cells::append(char *text, std::size_t length) noexcept {
  if (used_ == cells_.size())
    cells_.emplace_back();
  Cell &added = cells_[used_];
  added.text = GString{text, length, length + 1};
  added.cell = GSList{&added.text, nullptr};
  if (used_ > 0)
    cells_[used_ - 1].cell.next = &added.cell;
  ++used_;
}

void EventDraft::open(const EventField &field) noexcept {
  field_ = &field;
  content_ = &contents_[static_cast<std::size_t>(&field - event_fields.data())];
  content_->buffer.clear();
  content_->items.clear();
  if (std::holds_alternative<TracksField>(field.kind))
    tracks_.clear();
}

void EventDraft::append(std::string_view piece) noexcept {
  content_->buffer.append(piece);
}

std::optional<ListOddity> EventDraft::close() noexcept {
  return std::visit([this](auto field) { return fill(field); }, field_->kind);
}

void EventDraft::append_track(std::string_view piece) noexcept {
  track_.append(piece);
}

void EventDraft::close_track() noexcept {
  if (!track_.present)
    return;
  std::string &text = tracks_.emplace_back(std::exchange(track_.characters, {}));
  content_->items.append(text.data(), text.size());
}

PackedEvent EventDraft::finish() noexcept {
  derive_sub_category(event_);
  return pack(event_, parts_.memory());
}

gint32 EventDraft::number() const noexcept {
  return leading_integer(content_->buffer.characters.c_str());
}

std::optional<ListOddity> EventDraft::fill(NumberField field) noexcept {
  event_.*field.member = number();
  return std::nullopt;
}

std::optional<ListOddity> EventDraft::fill(TimeField field) noexcept {
  event_.*field.member = number();
  return std::nullopt;
}

GString *EventDraft::text_for(GString *ZoxEvent::*member) noexcept {
  if (!content_->buffer.present)
    return nullptr;
  std::string &characters = content_->buffer.characters;
  if (std::ranges::find(shared_text_members, member) != shared_text_members.end())
    return parts_.text(characters);
  content_->text = GString{characters.data(), characters.size(), characters.size() + 1};
  return &content_->text;
}

std::optional<ListOddity> EventDraft::fill(TextField field) noexcept {
  event_.*field.member = text_for(field.member);
  return std::nullopt;
}

std::optional<ListOddity> EventDraft::fill(ListField field) noexcept {
  if (!content_->buffer.present)
    return ListOddity::WithoutText;
  GSList *list = parts_.list(content_->buffer.characters);
  const GSList *earlier = std::exchange(event_.*field.member, list);
  return earlier == nullptr ? std::nullopt : std::optional(ListOddity::AlreadyFilled);
}

std::optional<ListOddity> EventDraft::fill(TracksField field) noexcept {
  event_.*field.member = content_->items.list();
  return std::nullopt;
}

}  // namespace velkor
