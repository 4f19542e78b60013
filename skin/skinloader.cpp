#include "skinloader.h"

#include "elementstyle.h"
#include "skinaccessible.h"
#include "skinanimwidget.h"
#include "skinareawidget.h"
#include "skindigitcell.h"
#include "skinlabelwidget.h"
#include "skinlightwidget.h"
#include "skinlistarea.h"
#include "skinreader.h"
#include "skinsliderwidget.h"
#include "skintextarea.h"
#include "skintextfield.h"
#include "windowshape.h"

#include "platform/dialogs.h"
#include "platform/readfile.h"

#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QWidget>

#include <algorithm>

namespace {

// A skin without a main picture still gets a surface for its digit groups,
// unless its "W" size asks for more than any screen shows.
constexpr qint64 LargestBlankCanvas = 4096LL * 4096LL;

// Larger than any screen; a "W" record beyond it is a mistake, and a window of
// 32767 x 32767 pixels would need gigabytes to paint.
constexpr int LargestWindowSide = 8192;

QSize windowSizeFor(const QSize &picture, int scale)
{
    return (picture * scale).boundedTo(QSize(LargestWindowSide, LargestWindowSide));
}

QImage loadPicture(const QString &path)
{
    QFile file;
    if (openRegularFile(file, path, QIODevice::ReadOnly, kMaxPictureFileBytes) != FileFault::None)
        return {};
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true);
    const QImage image = reader.read();
    return image.isNull() ? QImage() : image.convertToFormat(QImage::Format_RGB32);
}

template<typename T, size_t N> void hideEach(const std::array<QPointer<T>, N> &pool)
{
    for (const QPointer<T> &element : pool)
        if (element)
            element->hide();
}

template<typename T, size_t N> void deleteEach(std::array<QPointer<T>, N> &pool)
{
    for (QPointer<T> &element : pool)
        delete element.data();
}

void placeOnTop(QWidget &element)
{
    element.raise();
    element.show();
}

} // namespace

SkinPictures buildSkinPictures(const SkinDescription &skin)
{
    SkinPictures out;
    out.main = loadPicture(skin.mainBitmapPath);
    out.resource = loadPicture(skin.resourceBitmapPath);
    for (const SkinPictureStep &step : skin.pictureSteps) {
        switch (step.kind) {
        case SkinPictureStep::LoadMain:
            if (step.loaded) {
                const QImage picture = loadPicture(step.path);
                if (!picture.isNull())
                    out.main = picture;
            }
            break;
        case SkinPictureStep::Copy:
            if (!out.main.isNull()) {
                const QImage piece = out.main.copy(QRect(step.source, step.target.size()));
                QPainter(&out.main).drawImage(step.target.topLeft(), piece);
            }
            break;
        case SkinPictureStep::Commit:
            break; // copies land in the picture at once; nothing is pending
        case SkinPictureStep::TransparentColour:
            out.shape = RegionFromBitmap(out.main, quint32(step.colour));
            break;
        }
    }
    if (skin.outline.complete()) {
        out.shape = skin.outline.multiPolygon
                        ? multiPolygonRegion(skin.outline.points, skin.outline.polygonPointCounts)
                        : polygonRegion(skin.outline.points);
    }
    out.windowSize = skin.pictureSize.value_or(out.main.size());
    if (out.windowSize.isEmpty())
        out.windowSize = QSize(400, 160); // no picture at all: still a window to grab
    return out;
}

SkinLoader::SkinLoader(QWidget &window, Dialogs &dialogs, const Clock &clock)
    : m_window(window), m_dialogs(dialogs), m_clock(clock),
      m_display(
          m_canvas, m_pictures.resource, m_clock,
          [this](const QRect &rect) { repaintPicture(rect); },
          [this](int label, const QString &text) { setLabel(label, text); }),
      m_buttons(window)
{
    connect(&m_buttons, &SkinButtons::command, this, &SkinLoader::command);
    installSkinAccessibility();
}

SkinLoader::~SkinLoader()
{
    // The window usually outlives its loader only in tests; either way each
    // element goes exactly once.
    deleteEach(m_labels);
    deleteEach(m_lights);
    deleteEach(m_cells);
    deleteEach(m_sliders);
    deleteEach(m_lists);
    delete m_notepad.data();
    deleteEach(m_textFields);
    deleteEach(m_areas);
    deleteEach(m_anims);
}

bool SkinLoader::LoadSkin(const QString &file)
{
    return LoadSkin(readSkinFile(file), file);
}

bool SkinLoader::LoadSkin(SkinDescription skin, const QString &file)
{
    for (const QString &message : skin.messages)
        m_dialogs.message(message);
    if (!skin.accepted)
        return false;

    clearShape(m_window);
    m_file = file;
    m_skin = std::move(skin);
    m_pictures = buildSkinPictures(m_skin);
    m_canvas = m_pictures.main;
    const QSize size = m_pictures.windowSize;
    if (m_canvas.isNull() && qint64(size.width()) * size.height() <= LargestBlankCanvas) {
        m_canvas = QImage(size, QImage::Format_RGB32);
        m_canvas.fill(skinColourToQColor(m_skin.backgroundColour));
    }

    m_display.clearGroups();
    m_drawn.fill(QRect());
    for (const SkinDigitGroup &d : m_skin.digitGroups) {
        DigitGroup g;
        g.faceX = qint16(d.face.x());
        g.faceY = qint16(d.face.y());
        g.width = qint16(d.glyphWidth);
        g.height = qint16(d.glyphHeight);
        g.narrow = qint16(d.narrowWidth);
        g.sheetType = qint16(d.sheetType);
        g.gap = qint16(d.gap);
        g.mode = qint16(d.mode);
        g.x = d.pos.x();
        g.y = d.pos.y();
        g.visible = true;
        m_display.setGroup(d.number, g);
    }

    m_window.setFixedSize(windowSizeFor(size, m_scale));
    setWindowShape(m_window, m_pictures.shape, m_scale);
    placeElements();
    // Group numbers mean the same in every skin: show what the last one showed.
    for (int group = 0; group < SegmentDisplay::GroupCount; ++group)
        if (m_display.value(group).isValid())
            drawDD(group, m_display.value(group));
    m_scroller.skinChanged();
    m_window.update();
    return true;
}

void SkinLoader::setScale(int scale)
{
    scale = std::clamp(scale, 1, 3);
    if (scale == m_scale)
        return;
    m_scale = scale;
    if (!m_skin.accepted)
        return;
    m_window.setFixedSize(windowSizeFor(m_pictures.windowSize, m_scale));
    setWindowShape(m_window, m_pictures.shape, m_scale);
    placeElements();
    m_window.update();
}

void SkinLoader::hideAll()
{
    hideEach(m_labels);
    hideEach(m_lights);
    hideEach(m_cells);
    hideEach(m_sliders);
    hideEach(m_lists);
    if (m_notepad)
        m_notepad->hide();
    hideEach(m_textFields);
    hideEach(m_areas);
    hideEach(m_anims);
    m_lightPlaced.fill(false);
}

void SkinLoader::placeElements()
{
    hideAll();
    // Raised in this order, so what takes the mouse lies above what only shows.
    for (const SkinArea &a : m_skin.areas) {
        SkinAreaWidget *w = area(a.number);
        w->place(scaledRect(a.rect, m_scale), a.toolTip, true);
        placeOnTop(*w);
    }
    placeDigitCells();
    placeLights();
    placeLabels();
    m_buttons.place(m_skin.buttons, m_pictures.resource, m_skin.hoverStyle, m_scale);
    placeOthers();
}

void SkinLoader::placeDigitCells()
{
    for (const SkinDigitGroup &d : m_skin.digitGroups) {
        QPointer<SkinDigitCell> &cell = m_cells[size_t(d.number)];
        if (!cell)
            cell = new SkinDigitCell([this, group = d.number] { return shownDigits(group); },
                                     &m_window);
        cell->place(scaledRect(cellRect(m_display.group(d.number)), m_scale), d.toolTip, false);
        placeOnTop(*cell);
    }
}

void SkinLoader::placeLights()
{
    for (const SkinLight &l : m_skin.lights) {
        QPointer<SkinLightWidget> &light = m_lights[size_t(l.number)];
        if (!light)
            light = new SkinLightWidget(&m_window);
        light->configure(l, m_scale);
        light->raise();
        m_lightPlaced[size_t(l.number)] = true;
    }
    ShowLights(m_lightsView);
}

void SkinLoader::placeLabels()
{
    for (const SkinLabel &l : m_skin.labels) {
        SkinLabelWidget *label = labelWidget(l.number);
        label->configure(l, m_scale);
        placeOnTop(*label);
    }
}

void SkinLoader::placeOthers()
{
    for (const SkinSlider &s : m_skin.sliders) {
        SkinSliderWidget *w = slider(s.number);
        w->configure(s, m_pictures.resource, m_scale);
        placeOnTop(*w);
    }
    for (const SkinAnim &a : m_skin.anims) {
        SkinAnimWidget *w = anim(a.number);
        w->configure(a, m_pictures.resource, m_scale);
        placeOnTop(*w);
    }
    for (const SkinList &l : m_skin.lists) {
        if (l.number == 2) {
            notepad()->configure(l, m_scale);
            placeOnTop(*notepad());
        } else if (SkinListArea *w = list(l.number)) {
            w->configure(l, m_scale);
            placeOnTop(*w);
        }
    }
    for (const SkinLabel &t : m_skin.textFields) {
        SkinTextField *w = textField(t.number);
        w->configure(t, m_scale);
        placeOnTop(*w);
    }
}

void SkinLoader::paint(QPainter &painter, const QRect &dirty) const
{
    const QColor background = skinColourToQColor(m_skin.backgroundColour);
    const QRect picture = scaledRect(m_canvas.rect(), m_scale);
    const QRect part = dirty & picture;
    if (part != dirty) {
        // Only where the picture does not reach: a full fill costs as much again.
        for (const QRect &r : QRegion(dirty).subtracted(part))
            painter.fillRect(r, background);
    }
    if (part.isEmpty())
        return;
    painter.save();
    // Skins are pixel art: whole pixels at every scale, ours or the screen's.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    if (m_scale == 1) {
        painter.drawImage(part.topLeft(), m_canvas, part);
    } else {
        const QRect source(QPoint(part.left() / m_scale, part.top() / m_scale),
                           QPoint(part.right() / m_scale, part.bottom() / m_scale));
        painter.drawImage(scaledRect(source, m_scale), m_canvas, source);
    }
    painter.restore();
}

void SkinLoader::repaintPicture(const QRect &rect)
{
    if (m_drawing >= 0)
        m_drawn[size_t(m_drawing)] |= rect;
    m_window.update(scaledRect(rect, m_scale));
}

void SkinLoader::SetDD(int group, const QVariant &value)
{
    if (group == NameScroller::kGroup && m_scroller.enabled())
        m_scroller.setText(value.toString());
    else
        drawDD(group, value);
}

QVariant SkinLoader::digitValue(int group) const
{
    if (group == NameScroller::kGroup && m_scroller.enabled())
        return m_scroller.text();
    return m_display.value(group);
}

void SkinLoader::drawDD(int group, const QVariant &value)
{
    if (group < 0 || group >= SegmentDisplay::GroupCount)
        return;
    m_drawing = group;
    m_display.SetDD(group, value);
    m_drawing = -1;
    if (m_cells[size_t(group)])
        m_cells[size_t(group)]->drawn();
}

SkinDigitCell *SkinLoader::digitCell(int group) const
{
    return group >= 0 && group < SegmentDisplay::GroupCount ? m_cells[size_t(group)].data()
                                                            : nullptr;
}

QString SkinLoader::shownDigits(int group) const
{
    // A scrolling name is read whole, not as the few letters passing by.
    if (group == NameScroller::kGroup && m_scroller.enabled() && m_display.group(group).visible)
        return m_scroller.text();
    return m_display.text(group);
}

void SkinLoader::setGroupVisible(int group, bool visible)
{
    if (group < 0 || group >= SegmentDisplay::GroupCount || !m_cells[size_t(group)] ||
        m_cells[size_t(group)]->isHidden() == !visible)
        return;
    m_display.setGroupVisible(group, visible);
    m_cells[size_t(group)]->setVisible(visible);
    if (visible) {
        drawDD(group, m_display.value(group));
        return;
    }
    QRect &drawn = m_drawn[size_t(group)];
    drawn &= m_canvas.rect();
    if (drawn.isEmpty() || m_pictures.main.isNull())
        return;
    QPainter p(&m_canvas);
    p.drawImage(drawn.topLeft(), m_pictures.main, drawn);
    p.end();
    m_window.update(scaledRect(drawn, m_scale));
    drawn = QRect();
}

SkinLabelWidget *SkinLoader::labelWidget(int number)
{
    if (number < 0 || number >= int(m_labels.size()))
        return nullptr;
    QPointer<SkinLabelWidget> &slot = m_labels[size_t(number)];
    if (!slot) {
        slot = new SkinLabelWidget(&m_window);
        slot->setOutlineStyle(m_outline);
        slot->hide();
    }
    return slot;
}

void SkinLoader::setLabel(int number, const QString &text)
{
    if (SkinLabelWidget *label = labelWidget(number))
        label->setText(text);
}

QString SkinLoader::label(int number) const
{
    if (number < 0 || number >= int(m_labels.size()) || !m_labels[size_t(number)])
        return {};
    return m_labels[size_t(number)]->text();
}

void SkinLoader::ShowLights(const LightsView &view)
{
    // Light 0 has no switch behind it.
    m_lightsView = view;
    for (int n = 0; n <= LightsView::Count; ++n)
        if (m_lights[size_t(n)])
            m_lights[size_t(n)]->setVisible(n > 0 && m_lightPlaced[size_t(n)] &&
                                            view.visible[size_t(n)]);
    setLabel(26, view.label26);
}

SkinLightWidget *SkinLoader::light(int number) const
{
    if (number < 0 || number > LightsView::Count || !m_lightPlaced[size_t(number)])
        return nullptr;
    return m_lights[size_t(number)];
}

void SkinLoader::setOutlineStyle(int style)
{
    m_outline = style;
    m_buttons.setOutlineStyle(style);
    for (const QPointer<SkinLabelWidget> &label : m_labels)
        if (label)
            label->setOutlineStyle(style);
}

SkinSliderWidget *SkinLoader::slider(int number)
{
    if (number < 0 || number >= int(m_sliders.size()))
        return nullptr;
    QPointer<SkinSliderWidget> &slot = m_sliders[size_t(number)];
    if (!slot) {
        slot = new SkinSliderWidget(number, &m_window);
        slot->hide();
        connect(slot, &SkinSliderWidget::valueChanged, this, &SkinLoader::sliderChanged);
        connect(slot, &SkinSliderWidget::dragFinished, this, &SkinLoader::sliderReleased);
    }
    return slot;
}

void SkinLoader::setSliderValue(int number, double value)
{
    if (SkinSliderWidget *knob = slider(number); knob && !knob->dragging())
        knob->setValue(value);
}

void SkinLoader::setSliderShown(int number, bool shown)
{
    const bool placed = std::any_of(m_skin.sliders.begin(), m_skin.sliders.end(),
                                    [number](const SkinSlider &s) { return s.number == number; });
    if (SkinSliderWidget *knob = slider(number))
        knob->setVisible(shown && placed);
}

void SkinLoader::setPicture(int number, const QImage &picture, const QString &hint)
{
    if (SkinAreaWidget *target = area(number)) {
        target->setPicture(picture);
        target->setToolTip(hint);
    }
}

SkinListArea *SkinLoader::list(int number)
{
    if (number < 1 || number >= int(m_lists.size()) || number == 2 || number == 3)
        return nullptr;
    QPointer<SkinListArea> &slot = m_lists[size_t(number)];
    if (!slot)
        slot = new SkinListArea(number, &m_window);
    return slot;
}

SkinTextArea *SkinLoader::notepad()
{
    if (!m_notepad)
        m_notepad = new SkinTextArea(&m_window);
    return m_notepad;
}

SkinTextField *SkinLoader::textField(int number)
{
    if (number < 0 || number >= int(m_textFields.size()))
        return nullptr;
    QPointer<SkinTextField> &slot = m_textFields[size_t(number)];
    if (!slot)
        slot = new SkinTextField(number, &m_window);
    return slot;
}

SkinAreaWidget *SkinLoader::area(int number)
{
    if (number < 1 || number >= int(m_areas.size()))
        return nullptr;
    QPointer<SkinAreaWidget> &slot = m_areas[size_t(number)];
    if (!slot) {
        slot = new SkinAreaWidget(number, &m_window);
        connect(slot, &SkinAreaWidget::doubleClicked, this, &SkinLoader::areaDoubleClicked);
    }
    return slot;
}

SkinAnimWidget *SkinLoader::anim(int number)
{
    if (number < 0 || number >= int(m_anims.size()))
        return nullptr;
    QPointer<SkinAnimWidget> &slot = m_anims[size_t(number)];
    if (!slot)
        slot = new SkinAnimWidget(number, &m_window);
    return slot;
}
