// The modeller's own viewer inside a widget of the toolkit: the widget's context is lent to it, and each
// picture goes into the widget's frame buffer.
#include <QtGui/qguiapplication_platform.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QOpenGLWidget>
#include <QTimer>
#include <QWheelEvent>

#include <AIS_InteractiveContext.hxx>
#include <AIS_Shape.hxx>
#include <AIS_ViewController.hxx>
#include <Aspect_NeutralWindow.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <OpenGl_Context.hxx>
#include <OpenGl_FrameBuffer.hxx>
#include <OpenGl_GraphicDriver.hxx>
#include <Standard_Failure.hxx>
#include <V3d_View.hxx>
#include <V3d_Viewer.hxx>
#include <deque>
#include <map>
#include <set>

#include "base/failure.h"
#include "drafting_host/document/host_document.h"
#include "drawing_view/drawing_view.h"
#include "drawing_view/part_looks.h"
#include "drawing_view/point_picker.h"
#include "drawing_view/viewer_parts.h"

namespace brenvik::desktop {

namespace {

/// Of the part's size; and in radians. Holes look round, and a cabinet is meshed in well under a second.
constexpr double MeshDeflection = 0.002, MeshAngle = 0.6;
/// How long shapes are prepared before the window takes its events again, in milliseconds.
constexpr int PrepareBudget = 40;
/// Around everything, of the view's size.
constexpr double FitMargin = 0.05;

class ModellerView : public QOpenGLWidget, public AIS_ViewController, public DrawingView {
  public:
    ModellerView() {
        setMouseTracking(true);
        setFocusPolicy(Qt::StrongFocus);
        setMinimumSize(240, 180);
        SetAllowRotation(true);
        BindGestures(ChangeMouseGestureMap());
        mPreparing.setInterval(0);
        connect(&mPreparing, &QTimer::timeout, this, [this] { Prepare(); });
    }
    ~ModellerView() override {
        makeCurrent();
        mShown.clear();
        mLeft.clear();
        if (!mContext.IsNull()) mContext->RemoveAll(false);
        mContext.Nullify();
        if (!mView.IsNull()) mView->Remove();
        mView.Nullify();
        mViewer.Nullify();
        mDriver.Nullify();
        doneCurrent();
    }

    QWidget& Widget() override { return *this; }

    void Show(HostDocument* document) override {
        if (document != mDocument) TurnTo(document);
        if (mContext.IsNull()) return;
        makeCurrent();
        TakeDrawing();
        update();
    }

    void Forget(const HostDocument& document) override {
        if (&document == mDocument) TurnTo(nullptr);
        const auto left = mLeft.find(&document);
        if (left == mLeft.end() || mContext.IsNull()) return;
        makeCurrent();
        for (const auto& [handle, shown] : left->second.parts) mContext->Remove(shown.object, false);
        mLeft.erase(left);
    }

    void Mark(const std::vector<std::string>& handles) override {
        mMarked = std::set<std::string>(handles.begin(), handles.end());
        ShowMarks();
    }

    void SetLook(ViewLook look) override {
        mMode = look == ViewLook::Wireframe ? AIS_WireFrame : AIS_Shaded;
        if (mContext.IsNull()) return;
        makeCurrent();
        for (auto& [handle, shown] : mShown)
            if (!shown.object.IsNull()) mContext->SetDisplayMode(shown.object, mMode, false);
        Redraw();
    }

    void LookFrom(ViewSide side) override {
        mSide = side;
        if (mView.IsNull()) return;
        mView->SetProj(OrientationOf(side));
        Fit();
    }

    void LookAlong(const Point3& towardsEye, const Point3& up) override {
        if (mView.IsNull()) return;
        Turn(*mView, towardsEye, up);
        Fit();
    }

    void Fit() override {
        if (mView.IsNull()) return;
        FitEverything();
        mFitted = true;
        Redraw();
    }

    bool Ready() const override { return !mView.IsNull() && mWaiting.empty(); }

    Point3 TowardsEye() const override {
        if (mView.IsNull()) return {0, 0, 1};
        return SightNow().axes.z;
    }

    Point3 Up() const override {
        if (mView.IsNull()) return {0, 1, 0};
        return SightNow().axes.y;
    }

    std::optional<QPointF> PlaceOf(const Point3& point) const override {
        if (mView.IsNull()) return std::nullopt;
        const ScreenPlace place = SightNow().PlaceOf(point);
        return QPointF(place.x, place.y) / devicePixelRatioF();
    }

    void AskForPoint(const PointWish* wish) override {
        mPicker.Ask(wish);
        if (wish != nullptr) TellBodies();
    }

  protected:
    void initializeGL() override {
        try {
            StartViewer();
        } catch (const Standard_Failure& failure) {
            Die(std::string("the drawing can't be shown: ") + failure.GetMessageString());
        }
    }

    void paintGL() override {
        if (mView.IsNull()) return;
        const Handle(OpenGl_Context) context = mDriver->GetSharedContext();
        Handle(OpenGl_FrameBuffer) buffer = context->DefaultFrameBuffer();
        if (buffer.IsNull()) {
            buffer = new WidgetBuffer;
            context->SetDefaultFrameBuffer(buffer);
        }
        if (!buffer->InitWrapper(context))
            return Die("the drawing can't be shown: OpenGL has no frame buffer");
        const Handle(Aspect_NeutralWindow) window = Handle(Aspect_NeutralWindow)::DownCast(mView->Window());
        Standard_Integer width = 0, height = 0;
        window->Size(width, height);
        const Graphic3d_Vec2i size = buffer->GetVPSize();
        if (width != size.x() || height != size.y()) {
            window->SetSize(size.x(), size.y());
            mView->MustBeResized();
            // Until the user looks elsewhere, everything stays in sight at any size.
            if (mFitted) FitEverything();
            mView->Invalidate();
        }
        mView->InvalidateImmediate();
        FlushViewEvents(mContext, mView, true);
    }

    void mousePressEvent(QMouseEvent* event) override {
        if (!mPicker.TakePress(*event)) TakeButtons(*event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (mView.IsNull()) return;
        const std::optional<Snap> snap = mPicker.TakeRelease(*event, SightNow(), SeesThrough());
        if (!snap) return TakeButtons(*event);
        if (onPoint) QTimer::singleShot(0, this, [this, snap] { onPoint(*snap); });
    }
    void changeEvent(QEvent* event) override {
        QOpenGLWidget::changeEvent(event);
        if (event->type() != QEvent::PaletteChange || mView.IsNull()) return;
        makeCurrent();
        DressAll();
        Redraw();
    }
    void leaveEvent(QEvent* event) override {
        mPicker.Hide();
        QOpenGLWidget::leaveEvent(event);
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (mView.IsNull()) return;
        if (const std::optional<QPointF> pressed = mPicker.TakeDrag(*event))
            UpdateMouseButtons(PixelOf(*pressed), ButtonsOf(*event), FlagsOf(*event), false);
        if (event->buttons() == Qt::NoButton) mPicker.Show(event->position(), SightNow(), SeesThrough());
        if (event->buttons() != Qt::NoButton) mFitted = false;
        if (UpdateMousePosition(PixelOf(event->position()), ButtonsOf(*event), FlagsOf(*event), false))
            update();
    }
    void wheelEvent(QWheelEvent* event) override {
        if (mView.IsNull()) return;
        const double step = event->angleDelta().y() / 120.0;
        mFitted = false;
        mPicker.Hide();
        if (UpdateZoom(Aspect_ScrollDelta(PixelOf(event->position()), step * 8))) update();
    }

    void OnSelectionChanged(const Handle(AIS_InteractiveContext) & context,
                            const Handle(V3d_View) &) override {
        std::vector<std::string> handles;
        for (context->InitSelected(); context->MoreSelected(); context->NextSelected())
            for (const auto& [handle, shown] : mShown)
                if (shown.object == context->SelectedInteractive()) handles.push_back(handle);
        mMarked = std::set<std::string>(handles.begin(), handles.end());
        DressAll();
        Redraw();
        if (onPicked)
            QTimer::singleShot(0, this, [this, handles, drawing = mDocument] {
                if (drawing == mDocument) onPicked(handles);
            });
    }
    void handleViewRedraw(const Handle(AIS_InteractiveContext) & context,
                          const Handle(V3d_View) & view) override {
        AIS_ViewController::handleViewRedraw(context, view);
        if (myToAskNextFrame) update();
    }

  private:
    /// The first look at a drawing has everything in sight: at once by the boxes of its parts, and once they
    /// are shown by themselves.
    enum class Fitting { Wanted, ByBoxes, Done };

    struct ShownPart {
        TopoDS_Shape shape;
        int color = 0;
        PartLook look;
        Handle(AIS_Shape) object;
    };

    /// What is kept of a drawing while another one is shown.
    struct LeftDrawing {
        std::map<std::string, ShownPart> parts;
        Handle(Graphic3d_Camera) camera;
        Fitting fitting = Fitting::Wanted;
        bool fitted = false;
    };

    /// Two drawings may have the same handles, so each has its parts for itself.
    void TurnTo(HostDocument* document) {
        HostDocument* const before = std::exchange(mDocument, document);
        mWaiting.clear();
        mMarked.clear();
        if (mContext.IsNull()) {
            mFitting = Fitting::Wanted;
            return;
        }
        makeCurrent();
        if (before != nullptr) Leave(*before);
        const auto left = mLeft.find(document);
        if (left == mLeft.end()) {
            mFitting = Fitting::Wanted;
            return;
        }
        TakeUpAgain(left->second);
        mLeft.erase(left);
    }

    void Leave(const HostDocument& document) {
        mContext->ClearSelected(false);
        mContext->ClearDetected(false);
        for (const auto& [handle, shown] : mShown) mContext->Erase(shown.object, false);
        mLeft[&document] = {std::exchange(mShown, {}), new Graphic3d_Camera(mView->Camera()), mFitting,
                            mFitted};
    }

    void TakeUpAgain(LeftDrawing& left) {
        mShown = std::move(left.parts);
        for (const auto& [handle, shown] : mShown) mContext->Display(shown.object, mMode, 0, false);
        DressAll();
        // The window may have another shape by now.
        const double aspect = mView->Camera()->Aspect();
        mView->Camera()->Copy(left.camera);
        mView->Camera()->SetAspect(aspect);
        mFitting = left.fitting;
        if (left.fitted) Fit();
        mFitted = left.fitted;
    }

    void Die(const std::string& reason) {
        mView.Nullify();
        mContext.Nullify();
        if (onDead) QTimer::singleShot(0, this, [this, reason] { onDead(reason); });
    }

    void StartViewer() {
        const auto* const x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
        mDriver = MakeDriver(reinterpret_cast<Aspect_XDisplay*>(x11->display()));
        const Handle(OpenGl_Context) context = new OpenGl_Context;
        if (!context->Init()) return Die("the drawing can't be shown: OpenGL isn't there");
        mViewer = new V3d_Viewer(mDriver);
        LightUp(*mViewer);
        mContext = new AIS_InteractiveContext(mViewer);
        mContext->HighlightStyle(Prs3d_TypeOfHighlight_Selected)->SetColor(MarkedEdgeColor());
        mContext->HighlightStyle(Prs3d_TypeOfHighlight_LocalSelected)->SetColor(MarkedEdgeColor());
        mContext->HighlightStyle(Prs3d_TypeOfHighlight_Dynamic)->SetColor(PointedColor());
        mView = mViewer->CreateView();
        LayGround(*mView, OnDarkGround());
        mView->SetImmediateUpdate(false);
        const Handle(Aspect_NeutralWindow) frame = new Aspect_NeutralWindow;
        frame->SetVirtual(true);
        // That of the whole window: asking for the widget's own would give every widget a window of the
        // system.
        frame->SetNativeHandle(static_cast<Aspect_Drawable>(this->window()->winId()));
        frame->SetSize(std::max(width(), 1), std::max(height(), 1));
        mView->SetWindow(frame, context->RenderingContext());
        mView->ChangeRenderingParams().NbMsaaSamples = 4;
        LayGround(*mView, OnDarkGround());
        LookFrom(mSide);
        TakeDrawing();
    }

    // Parts that are gone or hidden go; those that are new or changed are prepared one after another.
    void TakeDrawing() {
        mWaiting.clear();
        std::set<std::string> present;
        if (mDocument != nullptr && !mDocument->Closed())
            for (HostEntity* entity : mDocument->Model().Entities()) {
                const auto* const solid = dynamic_cast<const HostSolid*>(entity);
                if (solid == nullptr || !IsShown(*solid)) continue;
                const std::string handle = solid->Handle();
                present.insert(handle);
                const auto known = mShown.find(handle);
                const bool same = known != mShown.end() && known->second.shape.IsSame(solid->Shape()) &&
                                  known->second.color == ColorKey(*solid);
                if (!same) mWaiting.push_back(handle);
            }
        for (auto at = mShown.begin(); at != mShown.end();) {
            if (present.contains(at->first)) {
                ++at;
                continue;
            }
            mContext->Remove(at->second.object, false);
            at = mShown.erase(at);
        }
        if (!mWaiting.empty()) mPreparing.start();
        if (!mWaiting.empty() && mFitting == Fitting::Wanted) {
            mFitting = Fitting::ByBoxes;
            Fit();
        }
        if (mPicker.Asked()) TellBodies();
        Redraw();
    }

    void Prepare() {
        // Events are taken in the middle of commands too, which may have closed the drawing.
        if (mContext.IsNull() || mDocument == nullptr || mDocument->Closed()) mWaiting.clear();
        makeCurrent();
        QElapsedTimer timer;
        timer.start();
        while (!mWaiting.empty() && timer.elapsed() < PrepareBudget) {
            const std::string handle = mWaiting.front();
            mWaiting.pop_front();
            if (const auto* const solid = dynamic_cast<HostSolid*>(mDocument->HandleToObject(handle)))
                ShowSolid(handle, *solid);
        }
        if (mWaiting.empty()) {
            mPreparing.stop();
            if (mPicker.Asked()) TellBodies();
            ShowMarks();
            // Not for a user who looks elsewhere already.
            if (std::exchange(mFitting, Fitting::Done) == Fitting::ByBoxes && mFitted) Fit();
        }
        Redraw();
    }

    void ShowSolid(const std::string& handle, const HostSolid& solid) {
        ShownPart& shown = mShown[handle];
        if (!shown.object.IsNull()) mContext->Remove(shown.object, false);
        try {
            shown.shape = solid.Shape();
            shown.color = ColorKey(solid);
            const double size = SizeOf(solid);
            BRepMesh_IncrementalMesh(shown.shape, std::max(size * MeshDeflection, 1e-3), false, MeshAngle,
                                     false);
            shown.object = new AIS_Shape(shown.shape);
            const Handle(Prs3d_Drawer)& drawer = shown.object->Attributes();
            drawer->SetAutoTriangulation(false);
            shown.look = {PartColor(solid), mMarked.contains(handle), OnDarkGround()};
            Dress(*shown.object, shown.look);
            mContext->Display(shown.object, mMode, 0, false);
        } catch (const Standard_Failure&) {
            // One body that the viewer can't take must not cost the picture of the others.
            shown.object = new AIS_Shape(TopoDS_Shape());
        } catch (const Failure&) {
            // Erased since it was put into the queue.
            mShown.erase(handle);
        }
    }

    void ShowMarks() {
        if (mContext.IsNull()) return;
        makeCurrent();
        mContext->ClearSelected(false);
        for (const std::string& handle : mMarked)
            if (const auto shown = mShown.find(handle); shown != mShown.end())
                mContext->AddOrRemoveSelected(shown->second.object, false);
        DressAll();
        Redraw();
    }

    bool OnDarkGround() const { return palette().color(QPalette::Window).lightness() < 128; }

    /// Only what looks otherwise than before is touched: a click in a large job marks two parts of hundreds.
    void DressAll() {
        for (auto& [handle, shown] : mShown) {
            const PartLook look{shown.look.color, mMarked.contains(handle), OnDarkGround()};
            if (shown.object.IsNull() || look == shown.look) continue;
            shown.look = look;
            Dress(*shown.object, look);
        }
    }

    void FitEverything() {
        if (mWaiting.empty()) return mView->FitAll(FitMargin, false);
        mView->FitAll(BoxOfShown(*mDocument), FitMargin, false);
    }

    void Redraw() {
        if (!mView.IsNull()) mView->Invalidate();
        update();
    }

    bool SeesThrough() const { return mMode == AIS_WireFrame; }
    Sight SightNow() const {
        const double ratio = devicePixelRatioF();
        return SightOf(*mView->Camera(), width() * ratio, height() * ratio);
    }
    void TellBodies() {
        std::vector<TopoDS_Shape> shapes;
        for (const auto& [handle, shown] : mShown)
            if (!shown.shape.IsNull()) shapes.push_back(shown.shape);
        mPicker.SetBodies(shapes);
    }

    Graphic3d_Vec2i PixelOf(const QPointF& place) const {
        const double ratio = devicePixelRatioF();
        return Graphic3d_Vec2i(static_cast<int>(place.x() * ratio), static_cast<int>(place.y() * ratio));
    }
    void TakeButtons(const QMouseEvent& event) {
        if (mView.IsNull()) return;
        if (UpdateMouseButtons(PixelOf(event.position()), ButtonsOf(event), FlagsOf(event), false)) update();
    }

    Handle(OpenGl_GraphicDriver) mDriver;
    Handle(V3d_Viewer) mViewer;
    Handle(V3d_View) mView;
    Handle(AIS_InteractiveContext) mContext;
    HostDocument* mDocument = nullptr;
    std::map<std::string, ShownPart> mShown;
    std::map<const HostDocument*, LeftDrawing> mLeft;
    std::deque<std::string> mWaiting;
    std::set<std::string> mMarked;
    QTimer mPreparing;
    PointPicker mPicker{*this};
    int mMode = AIS_Shaded;
    ViewSide mSide = ViewSide::Isometric;
    Fitting mFitting = Fitting::Wanted;
    /// Everything is in sight, and the user hasn't moved the view since.
    bool mFitted = false;
};

}  // namespace

std::unique_ptr<DrawingView> MakeModellerView(std::string& reason) {
    // A widget that asks in vain for OpenGL takes the program down with it.
    const bool isX11 = QGuiApplication::platformName() == QLatin1String("xcb") &&
                       qApp->nativeInterface<QNativeInterface::QX11Application>() != nullptr;
    QOpenGLContext probe;
    if (!isX11 || !probe.create()) {
        reason =
            "The drawing can't be shown here: that takes an X display with OpenGL. Everything else works.";
        return nullptr;
    }
    return std::make_unique<ModellerView>();
}

}  // namespace brenvik::desktop
