#include "render/offscreen_window.h"

#include <stdexcept>
#include <vtkCallbackCommand.h>
#include <vtkCommand.h>
#include <vtkGenericOpenGLRenderWindow.h>
#include <vtkNew.h>

#include "render/egl_context.h"
#include "render/x_display.h"

namespace render {
namespace {

class EglWindow : public OffscreenWindow {
 public:
  EglWindow(int width, int height) {
    observe(vtkCommand::WindowMakeCurrentEvent, [](vtkObject*, unsigned long, void* self, void*) {
      static_cast<EglWindow*>(self)->context_.make_current();
    });
    observe(vtkCommand::WindowIsCurrentEvent, [](vtkObject*, unsigned long, void* self, void* answer) {
      *static_cast<bool*>(answer) = static_cast<EglWindow*>(self)->context_.is_current();
    });
    window_->SetReadyForRendering(true);
    window_->SetOffScreenRendering(1);
    window_->SetShowWindow(false);
    window_->SetSize(width, height);
    // Not OpenGLInitContext: the context exists already.
    window_->OpenGLInit();
  }
  EglWindow(const EglWindow&) = delete;
  EglWindow& operator=(const EglWindow&) = delete;
  ~EglWindow() override { window_->Finalize(); }

  vtkRenderWindow& window() override { return *window_; }

 private:
  void observe(unsigned long event, void (*react)(vtkObject*, unsigned long, void*, void*)) {
    vtkNew<vtkCallbackCommand> command;
    command->SetCallback(react);
    command->SetClientData(this);
    window_->AddObserver(event, command);
  }

  EglContext context_;
  vtkNew<vtkGenericOpenGLRenderWindow> window_;
};

class DisplayWindow : public OffscreenWindow {
 public:
  DisplayWindow(int width, int height) {
    require_x_display();
    window_ = vtkSmartPointer<vtkRenderWindow>::New();
    window_->SetOffScreenRendering(1);
    window_->SetShowWindow(false);
    window_->SetSize(width, height);
  }

  vtkRenderWindow& window() override { return *window_; }

 private:
  vtkSmartPointer<vtkRenderWindow> window_;
};

}  // namespace

std::unique_ptr<OffscreenWindow> make_offscreen_window(int width, int height) {
  std::string reasons;
  try {
    return std::make_unique<EglWindow>(width, height);
  } catch (const std::runtime_error& error) {
    reasons = error.what();
  }
  try {
    return std::make_unique<DisplayWindow>(width, height);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error("cannot render: " + reasons + ", and " + error.what());
  }
}

}  // namespace render
