// SPDX-License-Identifier: MIT
// A GTK 3 window: a picture of the toolkit's above a button and a slider of GTK's. V ends the view and makes
// it anew. `host_gtk3 2` opens two windows.
#include <VX_OpenGL64/VX_OpenGL64.h>
#include <examples/hosts/support/HostScene.h>

#include <gdk/gdkx.h>
#include <gtk/gtk.h>

#include <cstdio>
#include <memory>
#include <vector>

namespace {

class PictureWindow {
public:
    PictureWindow() {
        gtk_window_set_title(GTK_WINDOW(m_Window), "GTK 3");
        gtk_window_set_default_size(GTK_WINDOW(m_Window), 640, 408);
        gtk_widget_set_size_request(m_Button, 160, 48);
        gtk_range_set_value(GTK_RANGE(m_Slider), m_Scene->speed());
        GtkWidget* const row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 8);
        gtk_box_pack_start(GTK_BOX(row), m_Button, FALSE, FALSE, 0);
        gtk_box_pack_start(GTK_BOX(row), m_Slider, TRUE, TRUE, 8);
        GtkWidget* const column = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
        gtk_box_pack_start(GTK_BOX(column), m_Area, TRUE, TRUE, 0);
        gtk_box_pack_start(GTK_BOX(column), row, FALSE, FALSE, 0);
        gtk_container_add(GTK_CONTAINER(m_Window), column);
        gtk_style_context_add_provider(gtk_widget_get_style_context(m_Button), GTK_STYLE_PROVIDER(m_Style),
                                       GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
        paintButton();
        connect();
        ++s_Open;
        gtk_widget_show_all(m_Window);
    }

    ~PictureWindow() { g_object_unref(m_Style); }

private:
    void connect() {
        on(m_Area, "realize", [](GtkWidget*, void* self) { of(self).openView(); });
        // Also when the window is closed, while the area's X window is still there.
        on(m_Area, "unrealize", [](GtkWidget*, void* self) { of(self).m_View.reset(); });
        on(m_Window, "destroy", [](GtkWidget*, void*) {
            if (--s_Open == 0)
                gtk_main_quit();
        });
        on(m_Button, "clicked", [](GtkWidget*, void* self) {
            of(self).m_Scene->takeNextGround();
            of(self).paintButton();
        });
        on(m_Slider, "value-changed", [](GtkWidget* slider, void* self) {
            of(self).m_Scene->setSpeed(int(gtk_range_get_value(GTK_RANGE(slider))));
        });
        on(m_Window, "key-press-event", [](GtkWidget*, GdkEventKey* event, void* self) {
            if (event->keyval == GDK_KEY_v)
                of(self).m_View ? of(self).m_View.reset() : of(self).openView();
            return gboolean(event->keyval == GDK_KEY_v);
        });
    }
    void openView() {
        GdkWindow* const area = gtk_widget_get_window(m_Area);
        const unsigned long id = gdk_x11_window_get_xid(area);
        gdk_display_sync(gdk_window_get_display(area)); // the server has to know the window by now
        m_View = VX_GLHost::open(m_Scene.get(), {.inside = vx::NativeWindow::x11(id)});
    }
    // It has the colour that a click gives to the picture.
    void paintButton() {
        char text[96];
        std::snprintf(text, sizeof text,
                      "button { background: #%06x; color: white; border: none; border-radius: 0; }",
                      m_Scene->nextGround());
        gtk_css_provider_load_from_data(m_Style, text, -1, nullptr);
    }

    static PictureWindow& of(void* self) { return *static_cast<PictureWindow*>(self); }
    template <class Act>
    void on(GtkWidget* widget, const char* signal, Act act) {
        g_signal_connect(widget, signal, reinterpret_cast<GCallback>(+act), this);
    }

    static inline int s_Open = 0;
    GtkWidget* m_Window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    GtkWidget* m_Area = gtk_drawing_area_new();
    GtkWidget* m_Button = gtk_button_new_with_label("Next colour");
    GtkWidget* m_Slider = gtk_scale_new_with_range(GTK_ORIENTATION_HORIZONTAL, -180, 180, 1);
    GtkCssProvider* m_Style = gtk_css_provider_new();
    NSRef<HostScene> m_Scene = NSInit(new HostScene);
    std::unique_ptr<VX_GLHost> m_View;
};

} // namespace

int main(int count, char** words) {
    gdk_set_allowed_backends("x11");
    gtk_init(&count, &words);
    std::vector<std::unique_ptr<PictureWindow>> windows(count > 1 && *words[1] == '2' ? 2 : 1);
    for (auto& window : windows)
        window = std::make_unique<PictureWindow>();
    // Sizes, timers, notifications; frames come by themselves.
    g_timeout_add(
        10,
        [](void*) {
            NSApplication::sharedApplication()->runStep(0.0);
            return gboolean(G_SOURCE_CONTINUE);
        },
        nullptr);
    gtk_main();
}
