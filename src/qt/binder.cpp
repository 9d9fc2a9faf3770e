#include "qt/binder.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFocusEvent>
#include <QGroupBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStatusBar>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QTextEdit>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>

#include "display/operator_input.h"

namespace amp {

using namespace amp::ui;

struct FormBinder::Binding {
  Control* control = nullptr;
  QPointer<QObject> target;  // the widget, action or menu
  QPointer<QWidget> widget;  // the same when it is a widget
  int order = 0;             // declaration order in the form
  QPalette designPalette;
  bool designReadOnly = false;
  int lastTop = -1;
  std::vector<QPointer<QLabel>> panels;  // a status bar's panels
};

namespace {

constexpr Color kDefaultLabelFore = 0x000000;
constexpr Color kDefaultTextBack = 0xFFFFFF;

QColor ToQColor(Color c) { return QColor(int((c >> 16) & 255), int((c >> 8) & 255), int(c & 255)); }

QString Q(const std::string& s) { return QString::fromStdString(s); }

// The edit field of a text box or of an editable combo box.
QLineEdit* LineEditOf(QWidget* w) {
  if (auto* le = qobject_cast<QLineEdit*>(w)) return le;
  if (auto* cb = qobject_cast<QComboBox*>(w)) return cb->isEditable() ? cb->lineEdit() : nullptr;
  return nullptr;
}

// Multi-line captions and texts of the model end their lines with CR LF; a
// widget wants a bare line feed, or it draws the CR.
QString MultiLine(const std::string& s) {
  QString q = Q(s);
  q.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  return q;
}

// Writes `roles` for the active and inactive states only, so that a disabled
// widget still greys out as the style draws it.
void PaintRoles(QWidget* w, const QPalette& design,
                std::initializer_list<QPalette::ColorRole> roles, Color c, Color modelDefault) {
  if (c == modelDefault) {
    if (w->palette() != design) w->setPalette(design);
    return;
  }
  QPalette p = design;
  for (QPalette::ColorRole role : roles) {
    p.setColor(QPalette::Active, role, ToQColor(c));
    p.setColor(QPalette::Inactive, role, ToQColor(c));
  }
  if (w->palette() != p) w->setPalette(p);
}

QAction* ActionOf(QObject* o) {
  if (auto* a = qobject_cast<QAction*>(o)) return a;
  if (auto* m = qobject_cast<QMenu*>(o)) return m->menuAction();
  return nullptr;
}

// The key code a classic KeyPress event carries for `e`, or -1 when that
// event would not be raised (arrows, function keys, Tab, Delete).
int KeyAsciiOf(const QKeyEvent* e) {
  switch (e->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return 13;
    case Qt::Key_Backspace:
      return 8;
    case Qt::Key_Escape:
      return 27;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Delete:
      return -1;
    default:
      break;
  }
  const QString t = e->text();
  if (t.size() != 1) return -1;
  const char16_t u = t[0].unicode();
  if (u == 0 || u == 127 || u > 255) return -1;
  return u;
}

int QtKeyOf(int ascii) {
  switch (ascii) {
    case 13:
      return Qt::Key_Return;
    case 8:
      return Qt::Key_Backspace;
    case 27:
      return Qt::Key_Escape;
    default:
      break;
  }
  // Qt's codes of printable keys are the upper-case characters.
  return QChar(ascii).toUpper().unicode();
}

bool IgnoredFocusReason(Qt::FocusReason r) {
  // Switching windows, opening a menu or a drop-down list does not move the
  // focus between the panel's controls.
  return r == Qt::ActiveWindowFocusReason || r == Qt::PopupFocusReason ||
         r == Qt::MenuBarFocusReason;
}

QStringList ItemsOf(const ListControl& l) {
  QStringList items;
  for (const auto& s : l.Items()) items << Q(s);
  return items;
}

QStringList ItemsOf(const QComboBox* cb) {
  QStringList items;
  for (int i = 0; i < cb->count(); ++i) items << cb->itemText(i);
  return items;
}

QStringList ItemsOf(const QListWidget* lw) {
  QStringList items;
  for (int i = 0; i < lw->count(); ++i) items << lw->item(i)->text();
  return items;
}

class UpdateScope {
 public:
  explicit UpdateScope(int& n) : n_(n) { ++n_; }
  ~UpdateScope() { --n_; }

 private:
  int& n_;
};

}  // namespace

QString FormBinder::ObjectNameFor(const Control& c) {
  if (c.Index() < 0) return Q(c.Name());
  return Q(c.BaseName()) + '_' + QString::number(c.Index());
}

FormBinder::FormBinder(Form& form, QWidget* root, QObject* parent)
    : QObject(parent), form_(form), root_(root) {
  std::map<QString, QObject*> named;
  if (root) {
    named.emplace(root->objectName(), root);
    for (QObject* o : root->findChildren<QObject*>()) {
      if (o->objectName().isEmpty()) continue;
      named.emplace(o->objectName(), o);  // the first of a name wins
    }
  }
  int order = 0;
  for (Control* c : form.Controls()) {
    ++order;
    auto it = named.find(ObjectNameFor(*c));
    if (it == named.end() || it->second == root) continue;
    Bind(c, it->second);
    bindings_.back()->order = order;
  }
  observer_ = form_.AddObserver([this](Control* c) {
    if (!c) {
      MirrorCaption();
    } else if (Binding* b = Find(c)) {
      Mirror(*b);
    }
  });
  // A real focus move: the widget left raises Validate and LostFocus
  // through this binder as a click elsewhere would.
  form_.focusMover = [this](Control& to) {
    if (auto* w = qobject_cast<QWidget*>(Bound(to.Name()))) w->setFocus(Qt::OtherFocusReason);
  };
  SyncAll();
}

FormBinder::~FormBinder() {
  form_.focusMover = nullptr;
  form_.RemoveObserver(observer_);
  for (auto& watched : filtered_)
    if (watched) watched->removeEventFilter(this);
}

std::vector<std::string> FormBinder::Unbound() const {
  std::vector<std::string> out;
  for (Control* c : form_.Controls()) {
    if (dynamic_cast<TimerControl*>(c)) continue;
    if (!byControl_.count(c)) out.push_back(c->Name());
  }
  return out;
}

QObject* FormBinder::Bound(const std::string& name) const {
  Control* c = form_.Find(name);
  auto it = byControl_.find(c);
  return it == byControl_.end() ? nullptr : it->second->target.data();
}

QLabel* FormBinder::StatusPanel(const std::string& statusBarName, int i) const {
  auto it = byControl_.find(form_.Find(statusBarName));
  if (it == byControl_.end() || i < 0 || i >= static_cast<int>(it->second->panels.size()))
    return nullptr;
  return it->second->panels[static_cast<size_t>(i)];
}

FormBinder::Binding* FormBinder::Find(QObject* o) {
  auto it = byObject_.find(o);
  return it == byObject_.end() ? nullptr : it->second;
}

FormBinder::Binding* FormBinder::Find(Control* c) {
  auto it = byControl_.find(c);
  return it == byControl_.end() ? nullptr : it->second;
}

void FormBinder::Bind(Control* c, QObject* target) {
  auto owned = std::make_unique<Binding>();
  Binding& b = *owned;
  b.control = c;
  b.target = target;
  b.widget = qobject_cast<QWidget*>(target);
  bindings_.push_back(std::move(owned));
  byControl_[c] = &b;
  byObject_[target] = &b;

  if (QWidget* w = b.widget) {
    b.designPalette = w->palette();
    if (auto* le = qobject_cast<QLineEdit*>(w)) b.designReadOnly = le->isReadOnly();
    if (auto* pe = qobject_cast<QPlainTextEdit*>(w)) b.designReadOnly = pe->isReadOnly();
    if (auto* te = qobject_cast<QTextEdit*>(w)) b.designReadOnly = te->isReadOnly();
    if (auto* l = qobject_cast<QLabel*>(w)) l->setTextFormat(Qt::PlainText);
    // A field with a key filter takes text only through it: pasting goes
    // through the filter key by key (OnKeyPress), and the edit menu, the
    // selection's middle click and dropping, which would bypass it, are off.
    if (QLineEdit* le = LineEditOf(w); le && c->KeyPress) {
      le->setContextMenuPolicy(Qt::NoContextMenu);
      le->setAcceptDrops(false);
      if (le != w) {
        le->installEventFilter(this);
        filtered_.emplace_back(le);
        byObject_[le] = &b;
      }
    }
    // The model keeps option buttons exclusive by group; Qt must not
    // second-guess it by parent widget.
    if (auto* r = qobject_cast<QRadioButton*>(w)) r->setAutoExclusive(false);
    // A list or an up-down acts on the wheel only once the operator has
    // clicked or tabbed into it; see WheelIsStray.
    if (qobject_cast<QComboBox*>(w) || qobject_cast<QAbstractSpinBox*>(w))
      w->setFocusPolicy(Qt::StrongFocus);
    if (auto* sb = qobject_cast<QStatusBar*>(w)) {
      const int n = std::max(1, sb->property("panels").toInt());
      for (int i = 0; i < n; ++i) {
        auto* panel = new QLabel(sb);
        panel->setObjectName(ObjectNameFor(*c) + "_panel" + QString::number(i));
        panel->setTextFormat(Qt::PlainText);
        if (i == 0) {
          sb->addWidget(panel, 1);
        } else {
          panel->setMinimumWidth(120);
          sb->addPermanentWidget(panel);
        }
        b.panels.emplace_back(panel);
      }
    }
    w->installEventFilter(this);
    filtered_.emplace_back(w);
    // Mouse events of scrolling widgets land on their viewport.
    if (auto* area = qobject_cast<QAbstractScrollArea*>(w)) {
      area->viewport()->installEventFilter(this);
      filtered_.emplace_back(area->viewport());
      byObject_[area->viewport()] = &b;
    }
  }
  Connect(b);
}

void FormBinder::Connect(Binding& b) {
  Control* c = b.control;
  QObject* t = b.target;

  if (auto* menu = qobject_cast<QMenu*>(t)) {
    // A menu that opens is clicked, as its title is.
    connect(menu, &QMenu::aboutToShow, this, [this, c] {
      if (!updating_) c->RaiseClick();
    });
    return;
  }
  if (auto* a = qobject_cast<QAction*>(t)) {
    connect(a, &QAction::triggered, this, [this, &b, c] {
      if (updating_) return;
      c->RaiseClick();
      Mirror(b);  // a checkable action toggled itself; the model decides
    });
    return;
  }
  if (auto* button = qobject_cast<QAbstractButton*>(t)) {
    connect(button, &QAbstractButton::clicked, this, [this, &b, c] {
      if (updating_) return;
      OperatorClick(*c);
      Mirror(b);
    });
    return;
  }
  if (auto* cb = qobject_cast<QComboBox*>(t)) {
    auto* list = dynamic_cast<ListControl*>(c);
    if (!list) return;
    connect(cb, &QComboBox::activated, this, [this, &b, list](int i) {
      if (updating_) return;
      list->SetListIndex(i);
      Mirror(b);
    });
    if (cb->isEditable() && cb->lineEdit()) {
      connect(cb->lineEdit(), &QLineEdit::textEdited, this, [this, list](const QString& s) {
        if (!updating_) list->SetText(s.toStdString());
      });
    }
    return;
  }
  if (auto* lw = qobject_cast<QListWidget*>(t)) {
    auto* list = dynamic_cast<ListControl*>(c);
    if (!list) return;
    connect(lw, &QListWidget::currentRowChanged, this, [this, &b, list](int row) {
      if (updating_) return;
      list->SetListIndex(row);
      Mirror(b);
    });
    return;
  }
  auto* text = dynamic_cast<TextBox*>(c);
  if (!text) return;
  if (auto* le = qobject_cast<QLineEdit*>(t)) {
    connect(le, &QLineEdit::textEdited, this, [this, text](const QString& s) {
      if (!updating_) text->SetText(s.toStdString());
    });
  } else if (auto* pe = qobject_cast<QPlainTextEdit*>(t)) {
    connect(pe, &QPlainTextEdit::textChanged, this, [this, text, pe] {
      if (!updating_) text->SetText(pe->toPlainText().toStdString());
    });
  } else if (auto* te = qobject_cast<QTextEdit*>(t)) {
    connect(te, &QTextEdit::textChanged, this, [this, text, te] {
      if (!updating_) text->SetText(te->toPlainText().toStdString());
    });
  }
}

void FormBinder::SyncAll() {
  MirrorCaption();
  for (auto& b : bindings_) Mirror(*b);
}

void FormBinder::MirrorCaption() {
  if (root_ && root_->isWindow()) root_->setWindowTitle(Q(form_.Caption()));
}

void FormBinder::Mirror(Binding& b) {
  if (!b.target) return;
  UpdateScope scope(updating_);
  QSignalBlocker block(b.target.data());
  Control* c = b.control;

  if (auto* m = dynamic_cast<MenuItem*>(c)) {
    QAction* a = ActionOf(b.target);
    if (!a) return;
    a->setText(Q(m->Caption()));
    // Only a checked entry shows a mark; an unchecked one shows none.
    a->setCheckable(m->Checked());
    a->setChecked(m->Checked());
    a->setEnabled(m->Enabled());
    a->setVisible(m->Visible());
    return;
  }

  QWidget* w = b.widget;
  if (!w) return;
  if (w->isHidden() == c->Visible()) w->setHidden(!c->Visible());
  // WA_ForceDisabled is the widget's own setting, apart from a disabled frame.
  if (w->testAttribute(Qt::WA_ForceDisabled) == c->Enabled()) w->setEnabled(c->Enabled());

  if (auto* l = dynamic_cast<Label*>(c)) {
    const QString caption = MultiLine(l->Caption());
    if (auto* ql = qobject_cast<QLabel*>(w)) {
      if (ql->text() != caption) ql->setText(caption);
    } else if (auto* gb = qobject_cast<QGroupBox*>(w)) {
      gb->setTitle(caption);
    }
    // A label on a field-coloured panel draws with Text, elsewhere with
    // WindowText: the colour goes to both.
    PaintRoles(w, b.designPalette, {QPalette::WindowText, QPalette::Text}, l->ForeColor(),
               kDefaultLabelFore);
    if (l->Top() != b.lastTop) {
      b.lastTop = l->Top();
      if (QWidget* box = w->parentWidget(); box && box->property("rowsByTop").toBool())
        OrderRows(box);
    }
  } else if (auto* t = dynamic_cast<TextBox*>(c)) {
    const QString text = Q(t->Text());
    if (auto* le = qobject_cast<QLineEdit*>(w)) {
      if (le->text() != text) {
        const int pos = le->cursorPosition();
        le->setText(text);
        if (le->hasFocus())
          le->setCursorPosition(std::min<int>(pos, static_cast<int>(text.size())));
      }
      le->setReadOnly(b.designReadOnly || t->Locked());
    } else if (auto* pe = qobject_cast<QPlainTextEdit*>(w)) {
      if (pe->toPlainText() != MultiLine(t->Text())) {
        pe->setPlainText(MultiLine(t->Text()));
        pe->moveCursor(QTextCursor::End);
      }
      pe->setReadOnly(b.designReadOnly || t->Locked());
    } else if (auto* te = qobject_cast<QTextEdit*>(w)) {
      if (te->toPlainText() != MultiLine(t->Text())) {
        te->setPlainText(MultiLine(t->Text()));
        te->moveCursor(QTextCursor::End);
      }
      te->setReadOnly(b.designReadOnly || t->Locked());
    } else if (auto* ql = qobject_cast<QLabel*>(w)) {
      ql->setText(MultiLine(t->Text()));
    }
    PaintRoles(w, b.designPalette, {QPalette::Base}, t->BackColor(), kDefaultTextBack);
  } else if (auto* chk = dynamic_cast<CheckBox*>(c)) {
    if (auto* button = qobject_cast<QAbstractButton*>(w)) button->setText(Q(chk->Caption()));
    if (auto* qc = qobject_cast<QCheckBox*>(w)) {
      const Qt::CheckState s = chk->Value() == 1   ? Qt::Checked
                               : chk->Value() == 2 ? Qt::PartiallyChecked
                                                   : Qt::Unchecked;
      if (s != Qt::PartiallyChecked) qc->setTristate(false);
      qc->setCheckState(s);
    } else if (auto* button = qobject_cast<QAbstractButton*>(w)) {
      button->setCheckable(true);
      button->setChecked(chk->Value() == 1);
    }
  } else if (auto* opt = dynamic_cast<OptionButton*>(c)) {
    if (auto* button = qobject_cast<QAbstractButton*>(w)) {
      button->setText(Q(opt->Caption()));
      button->setCheckable(true);
      button->setChecked(opt->Value());
    }
  } else if (auto* cmd = dynamic_cast<CommandButton*>(c)) {
    if (auto* button = qobject_cast<QAbstractButton*>(w)) button->setText(Q(cmd->Caption()));
  } else if (auto* list = dynamic_cast<ListControl*>(c)) {
    const QStringList items = ItemsOf(*list);
    if (auto* cb = qobject_cast<QComboBox*>(w)) {
      if (ItemsOf(cb) != items) {
        cb->clear();
        cb->addItems(items);
      }
      cb->setCurrentIndex(list->ListIndex());
      if (cb->isEditable() && cb->currentText() != Q(list->Text()))
        cb->setEditText(Q(list->Text()));
    } else if (auto* lw = qobject_cast<QListWidget*>(w)) {
      if (ItemsOf(lw) != items) {
        lw->clear();
        lw->addItems(items);
      }
      lw->setCurrentRow(list->ListIndex());
    }
  } else if (auto* f = dynamic_cast<Frame*>(c)) {
    if (auto* gb = qobject_cast<QGroupBox*>(w)) gb->setTitle(Q(f->Caption()));
  } else if (auto* ud = dynamic_cast<UpDown*>(c)) {
    if (auto* sb = qobject_cast<QSpinBox*>(w)) {
      sb->setRange(ud->Min(), std::max(ud->Min(), ud->Max()));
      sb->setValue(ud->Value());
    }
  } else if (auto* pb = dynamic_cast<ProgressBar*>(c)) {
    if (auto* qp = qobject_cast<QProgressBar*>(w)) {
      qp->setRange(pb->Min(), std::max(pb->Min(), pb->Max()));
      qp->setValue(pb->Value());
    }
  } else if (auto* bar = dynamic_cast<StatusBar*>(c)) {
    for (size_t i = 0; i < b.panels.size(); ++i)
      if (b.panels[i]) b.panels[i]->setText(Q(bar->PanelText(static_cast<int>(i))));
  }
}

// The bound labels of a status list, in the order of their rows; labels on
// one row keep their declaration order. They take the first places of the
// container's layout; anything else in it (a stretch) stays after them.
void FormBinder::OrderRows(QWidget* container) {
  auto* layout = qobject_cast<QBoxLayout*>(container->layout());
  if (!layout) return;
  std::vector<Binding*> rows;
  for (auto& b : bindings_) {
    if (!b->widget || b->widget->parentWidget() != container) continue;
    if (!dynamic_cast<Label*>(b->control) || layout->indexOf(b->widget) < 0) continue;
    rows.push_back(b.get());
  }
  std::stable_sort(rows.begin(), rows.end(), [](const Binding* a, const Binding* b) {
    const int ta = static_cast<Label*>(a->control)->Top(),
              tb = static_cast<Label*>(b->control)->Top();
    return ta != tb ? ta < tb : a->order < b->order;
  });
  bool inOrder = true;
  for (size_t i = 0; i < rows.size() && inOrder; ++i)
    inOrder = layout->indexOf(rows[i]->widget) == static_cast<int>(i);
  if (inOrder) return;
  for (Binding* b : rows) layout->removeWidget(b->widget);
  for (size_t i = 0; i < rows.size(); ++i)
    layout->insertWidget(static_cast<int>(i), rows[i]->widget);
}

// Scrolling the panel past a list or an up-down must not pick an entry or
// step a value, and so send a command to the unit: the wheel counts only on
// the control that has the focus.
bool FormBinder::WheelIsStray(const QWidget* w) {
  if (!qobject_cast<const QComboBox*>(w) && !qobject_cast<const QAbstractSpinBox*>(w)) return false;
  const QWidget* focus = QApplication::focusWidget();
  return !focus || (focus != w && !w->isAncestorOf(focus));
}

bool FormBinder::eventFilter(QObject* watched, QEvent* event) {
  Binding* b = Find(watched);
  if (!b || !b->widget || updating_) return QObject::eventFilter(watched, event);
  Control* c = b->control;
  const bool onWidget = watched == b->widget.data();

  switch (event->type()) {
    case QEvent::KeyPress:
      if (!b->widget->isEnabled()) break;
      if (qobject_cast<QAbstractSpinBox*>(b->widget) && dynamic_cast<UpDown*>(c) &&
          OnSpinInput(*b, event))
        return true;
      return OnKeyPress(*b, watched, event);
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel: {
      if (event->type() != QEvent::Wheel && c->KeyPress && LineEditOf(b->widget) &&
          static_cast<QMouseEvent*>(event)->button() == Qt::MiddleButton)
        return true;
      if (event->type() == QEvent::Wheel && WheelIsStray(b->widget)) {
        // Left unaccepted, the wheel goes on to the parent: the panel scrolls.
        event->ignore();
        return true;
      }
      if (qobject_cast<QAbstractSpinBox*>(b->widget) && dynamic_cast<UpDown*>(c)) {
        if (b->widget->isEnabled() && OnSpinInput(*b, event)) return true;
        break;
      }
      if (event->type() == QEvent::Wheel || !b->widget->isEnabled()) break;
      const bool left = static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
      if (event->type() == QEvent::MouseButtonDblClick && c->DblClick && left) c->DblClick();
      // A label ignores presses, and the release would then go to its parent:
      // a label with a Click or DblClick handler takes them.
      if (left && qobject_cast<QLabel*>(b->widget) && (c->Click || c->DblClick)) return true;
      break;
    }
    case QEvent::MouseButtonRelease: {
      // Labels have no clicked signal; their Click is a left release over them.
      auto* me = static_cast<QMouseEvent*>(event);
      if (qobject_cast<QLabel*>(b->widget) && me->button() == Qt::LeftButton && c->Click &&
          b->widget->isEnabled() && b->widget->rect().contains(me->position().toPoint()))
        c->RaiseClick();
      break;
    }
    case QEvent::FocusIn:
      if (onWidget) OnFocusIn(*b, event);
      break;
    case QEvent::FocusOut:
      if (onWidget) OnFocusOut(*b, event);
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

bool FormBinder::OnKeyPress(Binding& b, QObject* watched, QEvent* event) {
  Control* c = b.control;
  if (forwardingKey_ || !c->KeyPress) return false;
  auto* ke = static_cast<QKeyEvent*>(event);
  if (ke->matches(QKeySequence::Paste)) {
    PasteThroughFilter(b);
    return true;
  }
  const int original = KeyAsciiOf(ke);
  if (original < 0) return false;
  int key = original;
  c->KeyPress(key);
  if (key == original) return false;
  if (key == 0) return true;  // the handler dropped the key
  // The handler replaced the key (a small letter raised to a capital): the
  // widget gets the new one instead.
  if (!b.widget) return true;
  QKeyEvent replaced(QEvent::KeyPress, QtKeyOf(key), Qt::NoModifier, QString(QChar(key)));
  forwardingKey_ = true;
  QCoreApplication::sendEvent(watched, &replaced);
  forwardingKey_ = false;
  return true;
}

// Each pasted character is one key through the control's filter. Line ends
// and other control characters are left out: a paste never presses Enter.
void FormBinder::PasteThroughFilter(Binding& b) {
  QLineEdit* le = LineEditOf(b.widget);
  if (!le || le->isReadOnly()) return;
  const QString pasted = QGuiApplication::clipboard()->text();
  for (const QChar ch : pasted) {
    int key = ch.unicode();
    if (key < 32 || key == 127 || key > 255) continue;
    b.control->KeyPress(key);
    if (key > 0) le->insert(QString(QChar(key)));
  }
}

// An up-down is two arrow buttons: a press on either arrow, the wheel or an
// arrow key raises UpClick or DownClick, and the spin box itself never steps,
// so what the field shows stays the logic's business.
bool FormBinder::OnSpinInput(Binding& b, QEvent* event) {
  auto* ud = static_cast<UpDown*>(b.control);
  auto* sb = static_cast<QAbstractSpinBox*>(b.widget.data());
  int dir = 0;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
      auto* me = static_cast<QMouseEvent*>(event);
      if (me->button() != Qt::LeftButton) return true;
      QStyleOptionSpinBox opt;
      opt.initFrom(sb);
      opt.rect = sb->rect();
      opt.frame = sb->hasFrame();
      opt.subControls = QStyle::SC_All;
      opt.buttonSymbols = sb->buttonSymbols();
      opt.stepEnabled = QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled;
      const auto hit = sb->style()->hitTestComplexControl(QStyle::CC_SpinBox, &opt,
                                                          me->position().toPoint(), sb);
      if (hit == QStyle::SC_SpinBoxUp) dir = 1;
      if (hit == QStyle::SC_SpinBoxDown) dir = -1;
      break;
    }
    case QEvent::Wheel: {
      const int dy = static_cast<QWheelEvent*>(event)->angleDelta().y();
      dir = dy > 0 ? 1 : dy < 0 ? -1 : 0;
      break;
    }
    case QEvent::KeyPress: {
      const int k = static_cast<QKeyEvent*>(event)->key();
      if (k == Qt::Key_Up || k == Qt::Key_PageUp)
        dir = 1;
      else if (k == Qt::Key_Down || k == Qt::Key_PageDown)
        dir = -1;
      else
        return false;
      break;
    }
    default:
      return false;
  }
  if (dir > 0 && ud->UpClick) ud->UpClick();
  if (dir < 0 && ud->DownClick) ud->DownClick();
  return true;
}

void FormBinder::OnFocusIn(Binding& b, QEvent* event) {
  if (IgnoredFocusReason(static_cast<QFocusEvent*>(event)->reason())) return;
  if (bounceKeep_) return;  // on the way back to a control that may not be left
  if (b.control->GotFocus) b.control->GotFocus();
}

void FormBinder::OnFocusOut(Binding& b, QEvent* event) {
  if (IgnoredFocusReason(static_cast<QFocusEvent*>(event)->reason())) return;
  if (bounceKeep_) return;
  Control* c = b.control;
  bool cancel = false;
  if (c->Validate) c->Validate(cancel);
  if (cancel) {
    // The control keeps the focus: put it back once Qt has moved it, and
    // report nothing about the round trip.
    bounceKeep_ = b.widget;
    QTimer::singleShot(0, this, [this] {
      QPointer<QWidget> keep = bounceKeep_;
      if (keep && keep->isVisible() && keep->isEnabled()) keep->setFocus(Qt::OtherFocusReason);
      bounceKeep_ = nullptr;
    });
    return;
  }
  if (c->LostFocus) c->LostFocus();
}

}  // namespace amp
