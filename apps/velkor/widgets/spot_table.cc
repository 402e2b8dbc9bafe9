/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/spot_table.h"

#include <cmath>
#include <string>
#include <utility>

#include "model/spot_query.h"
#include "widgets/accessible_name.h"
#include "widgets/translation.h"

namespace velkor::app {
namespace {

Glib::ustring text_from(std::string_view text) {
  return {text.data(), text.data() + text.size()};
}

Glib::ustring title_of(const RowItem &item) {
  return text_from(item.snapshot().table.title(item.row()));
}

Glib::ustring category_of(const RowItem &item) {
  return item.snapshot().category_name(item.row());
}

Glib::ustring poster_of(const RowItem &item) {
  return item.snapshot().table.poster(item.row());
}

Glib::ustring date_of(const RowItem &item) {
  return moment_text(item.snapshot().table.stamp(item.row()));
}

Glib::ustring rating_of(const RowItem &item) {
  const std::int32_t rating = item.snapshot().table.rating(item.row());
  return rating == 0 ? Glib::ustring() : number_text(rating);
}

Glib::ustring status_of(const RowItem &item) {
  return item.snapshot().status_name(item.row());
}

Glib::RefPtr<RowItem> item_of(const Glib::RefPtr<Gtk::ListItem> &place) {
  return std::dynamic_pointer_cast<RowItem>(place->get_item());
}

Gtk::Inscription &cell_of(const Glib::RefPtr<Gtk::ListItem> &place) {
  return dynamic_cast<Gtk::Inscription &>(*place->get_child());
}

/** A text that costs no layout of its own: a label would measure each. */
void put_cell(const Glib::RefPtr<Gtk::ListItem> &place, bool is_number) {
  auto *cell = Gtk::make_managed<Gtk::Inscription>();
  cell->set_text_overflow(Gtk::Inscription::Overflow::ELLIPSIZE_END);
  cell->set_min_chars(2);
  cell->set_hexpand(true);
  if (is_number) {
    cell->set_xalign(1);
    cell->add_css_class("numeric");
  }
  place->set_child(*cell);
}

}  // namespace

/**
 * Makes the header of a column one to sort by; the rows are sorted elsewhere. GTK does not tell by
 * which column a list is sorted, but asks the sorters in their order: the first one asked is it.
 */
class SpotTable::ColumnSorter : public Gtk::Sorter {
public:
  explicit ColumnSorter(Column column) : Glib::ObjectBase("VelkorColumnSorter"), column_(column) {}

  struct Question {
    std::optional<Column> first{};
  };
  /** Set while sorting() asks. */
  static Question *question;

protected:
  Gtk::Ordering compare_vfunc(gpointer /*left*/, gpointer /*right*/) override {
    if (question != nullptr && !question->first)
      question->first = column_;
    return Gtk::Ordering::SMALLER;
  }
  Order get_order_vfunc() override { return Order::PARTIAL; }

private:
  Column column_;
};

SpotTable::ColumnSorter::Question *SpotTable::ColumnSorter::question = nullptr;

SpotTable::SpotTable(const Remembered &remembered, const std::unordered_set<std::int32_t> &watched)
    : watched_(watched), selection_(Gtk::SingleSelection::create(rows_)) {
  connections_.push_back(rows_->signal_shown().connect([this] { show_cells(); }));
  connections_.push_back(rows_->signal_complete().connect([this] { restore(); }));
  selection_->set_autoselect(false);
  selection_->set_can_unselect(true);
  connections_.push_back(
      selection_->property_selected().signal_changed().connect([this] { selected_.emit(); }));
  const auto width = [&](Column column, int usual) {
    const int kept = remembered.column_widths[static_cast<std::size_t>(column)];
    return kept > 0 ? kept : usual;
  };
  add_mark_column();
  add_column(Column::title, _("Title"), width(Column::title, 0), title_of);
  add_column(Column::category, _("Category"), width(Column::category, 130), category_of);
  add_column(Column::poster, _("Poster"), width(Column::poster, 120), poster_of);
  add_column(Column::date, _("Date"), width(Column::date, 135), date_of);
  add_column(Column::rating, _("Rating"), width(Column::rating, 96), rating_of);
  add_column(Column::status, _("Status"), width(Column::status, 110), status_of);
  list_.set_model(selection_);
  list_.set_reorderable(false);
  list_.add_css_class("spots");
  list_.sort_by_column(columns_[static_cast<std::size_t>(remembered.sorting.column)],
                       remembered.sorting.descending ? Gtk::SortType::DESCENDING
                                                     : Gtk::SortType::ASCENDING);
  sorter_ = list_.get_sorter();
  connections_.push_back(sorter_->signal_changed().connect(
      [this](Gtk::Sorter::Change /*change*/) { sorted_.emit(); }));
  list_.signal_activate().connect([this](guint place) {
    if (rows_->view() && place < rows_->view()->rows.size())
      open_.emit(rows_->view()->snapshot->table.id(rows_->view()->rows[place]));
  });
  set_accessible_name(list_, _("Spots"));
  set_child(list_);
  set_expand(true);
}

SpotTable::~SpotTable() {
  for (sigc::connection &connection : connections_)
    connection.disconnect();
  list_.set_model({});  // which lets go of the cells
}

void SpotTable::add_mark_column() {
  const auto factory = Gtk::SignalListItemFactory::create();
  factory->signal_setup().connect([](const auto &place) { put_cell(place, false); });
  factory->signal_bind().connect([this](const auto &place) {
    Gtk::Inscription &cell = cell_of(place);
    const Glib::RefPtr<RowItem> item = item_of(place);
    cells_[&cell] = {item, nullptr};
    bind_mark(cell, *item);
  });
  factory->signal_unbind().connect([this](const auto &place) { cells_.erase(&cell_of(place)); });
  const auto column = Gtk::ColumnViewColumn::create("", factory);
  column->set_fixed_width(40);
  list_.append_column(column);
}

void SpotTable::add_column(Column column, const Glib::ustring &title, int width, TextOf text_of) {
  const bool is_number = column == Column::rating;
  const auto factory = Gtk::SignalListItemFactory::create();
  factory->signal_setup().connect([is_number](const auto &place) { put_cell(place, is_number); });
  factory->signal_bind().connect([this, text_of](const auto &place) {
    Gtk::Inscription &cell = cell_of(place);
    const Glib::RefPtr<RowItem> item = item_of(place);
    cells_[&cell] = {item, text_of};
    cell.set_text(text_of(*item));
  });
  factory->signal_unbind().connect([this](const auto &place) { cells_.erase(&cell_of(place)); });
  auto &view_column = columns_[static_cast<std::size_t>(column)];
  view_column = Gtk::ColumnViewColumn::create(title, factory);
  view_column->set_resizable(true);
  if (width > 0)
    view_column->set_fixed_width(width);
  else
    view_column->set_expand(true);
  view_column->set_sorter(Glib::make_refptr_for_instance(new ColumnSorter(column)));
  list_.append_column(view_column);
}

/** The items show other rows. */
void SpotTable::show_cells() {
  for (const auto &[widget, cell] : cells_)
    if (cell.text_of == nullptr)
      bind_mark(*widget, *cell.item);
    else
      widget->set_text(cell.text_of(*cell.item));
}

void SpotTable::bind_mark(Gtk::Inscription &cell, const RowItem &item) {
  cell.set_text(marks_of(item));
  name_row(cell, item);
}

Glib::ustring SpotTable::marks_of(const RowItem &item) const {
  Glib::ustring marks;
  if (item.snapshot().table.has(item.row(), mark_new))
    marks += "●";
  if (item.snapshot().table.has(item.row(), mark_hit))
    marks += "◆";
  if (watched_.contains(item.id()))
    marks += "★";
  return marks;
}

Glib::ustring SpotTable::words_for_marks(const RowItem &item) const {
  Glib::ustring words;
  if (item.snapshot().table.has(item.row(), mark_new))
    words += Glib::ustring(", ") + _("new");
  if (item.snapshot().table.has(item.row(), mark_hit))
    words += Glib::ustring(", ") + _("found by a watcher");
  if (watched_.contains(item.id()))
    words += Glib::ustring(", ") + _("on the watchlist");
  return words;
}

/** What a screen reader says of the row, which by itself has no name. */
void SpotTable::name_row(Gtk::Widget &cell, const RowItem &item) const {
  Gtk::Widget *frame = cell.get_parent();
  Gtk::Widget *row = frame == nullptr ? nullptr : frame->get_parent();
  if (row == nullptr)
    return;
  const Glib::ustring name = title_of(item) + ", " + category_of(item) + ", " + poster_of(item) +
                             ", " + date_of(item) + words_for_marks(item);
  const Glib::ustring number = Glib::ustring::compose(_("Posting %1"), item.id());
  gtk_accessible_update_property(GTK_ACCESSIBLE(row->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 name.c_str(), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, number.c_str(),
                                 -1);
}

Sorting SpotTable::sorting() const {
  ColumnSorter::Question question;
  ColumnSorter::question = &question;
  const Glib::RefPtr<RowItem> one = RowItem::create(nullptr, 0);
  const Glib::RefPtr<RowItem> other = RowItem::create(nullptr, 0);
  const Gtk::Ordering order = sorter_->compare(one->gobj(), other->gobj());
  ColumnSorter::question = nullptr;
  if (!question.first)
    return {};
  return {*question.first, order == Gtk::Ordering::LARGER};
}

void SpotTable::set_view(SharedView view) {
  const SharedView earlier = rows_->view();
  const bool same = earlier && earlier->query == view->query;
  if (const auto selected = selected_id())
    kept_selection_ = selected;
  if (!same)
    kept_top_.reset();
  else if (const auto top = top_id())
    kept_top_ = top;
  selection_->set_selected(GTK_INVALID_LIST_POSITION);
  const bool may_change_again = earlier && !same;
  rows_->set_view(std::move(view),
                  may_change_again ? RowList::Pace::after_a_pause : RowList::Pace::at_once);
  if (!same)
    get_vadjustment()->set_value(0);
}

/** All rows are there: what was chosen is chosen again, in the place where it is now. */
void SpotTable::restore() {
  const SpotView &view = *rows_->view();
  if (const auto id = std::exchange(kept_selection_, std::nullopt))
    if (const auto place = place_of(*view.snapshot, view.rows, *id))
      selection_->set_selected(static_cast<guint>(*place));
  if (const auto id = std::exchange(kept_top_, std::nullopt))
    scroll_to_top_of(*id);
}

std::optional<std::int32_t> SpotTable::selected_id() const {
  const auto item =
      std::dynamic_pointer_cast<const RowItem>(std::as_const(*selection_).get_selected_item());
  return item ? std::optional(item->id()) : std::nullopt;
}

void SpotTable::select(std::int32_t id) {
  const SharedView &view = rows_->view();
  if (!view || rows_->get_n_items() < view->rows.size()) {
    kept_selection_ = id;
    return;
  }
  if (const auto place = place_of(*view->snapshot, view->rows, id)) {
    selection_->set_selected(static_cast<guint>(*place));
    scroll_to_row(*place);
  }
}

void SpotTable::focus_list() {
  list_.grab_focus();
}

void SpotTable::watch_changed(std::int32_t id) {
  for (const auto &[widget, cell] : cells_)
    if (cell.text_of == nullptr && cell.item->id() == id)
      bind_mark(*widget, *cell.item);
}

void SpotTable::remember_widths(Remembered &remembered) const {
  for (std::size_t place = 0; place < column_count; ++place)
    remembered.column_widths[place] = std::max(columns_[place]->get_fixed_width(), 0);
}

double SpotTable::row_height() const {
  const guint count = rows_->get_n_items();
  return count == 0 ? 0 : get_vadjustment()->get_upper() / count;
}

/** The posting at the top, unless that is the first of the list, which stays the first. */
std::optional<std::int32_t> SpotTable::top_id() const {
  const double height = row_height();
  const double value = get_vadjustment()->get_value();
  if (height <= 0 || value <= 0)
    return std::nullopt;
  const auto place = static_cast<std::size_t>(std::floor(value / height));
  const SpotView &view = *rows_->view();
  return place < view.rows.size() ? std::optional(view.snapshot->table.id(view.rows[place]))
                                  : std::nullopt;
}

/** GTK 4.8 has no function for this, only the action of the list within the table. */
void SpotTable::scroll_to_row(std::size_t place) {
  for (Gtk::Widget *child = list_.get_first_child(); child != nullptr;
       child = child->get_next_sibling())
    if (GTK_IS_LIST_VIEW(child->gobj()))
      child->activate_action("list.scroll-to-item",
                             Glib::Variant<guint32>::create(static_cast<guint32>(place)));
}

/** The list knows its new height only once it has been laid out, which the next frame does. */
void SpotTable::scroll_to_top_of(std::int32_t id) {
  int frame = 0;
  add_tick_callback([this, id, frame](const Glib::RefPtr<Gdk::FrameClock> & /*clock*/) mutable {
    if (frame++ == 0)
      return true;
    const SharedView &view = rows_->view();
    if (const auto place = place_of(*view->snapshot, view->rows, id))
      get_vadjustment()->set_value(static_cast<double>(*place) * row_height());
    return false;
  });
}

}  // namespace velkor::app
