/* The GTK 4 test editor: a single-line entry above a multi-paragraph text view, for the tests
 * of native Wayland applications. It takes the options of the GTK 3 editor that matter there
 * and reports to the test as it does (gtk-report.h):
 *
 *   glimmo-gtk4-editor [--title TITLE] [--focus text|entry] [--text TEXT] [--app-id ID] */
#include <gtk/gtk.h>

#include "../gtk-report.h"
#include <stdio.h>
#include <string.h>

static const char* title = "Glimmo GTK 4 test editor";
static const char* focus = "text";
static const char* initial =
    "The first paragraph stays as it is.\n"
    "\n"
    "The last paragraph.";
static const char* app_id = "org.glimmo.TestEditor4";

static void activate(GtkApplication* app, gpointer data) {
    (void)data;
    GtkWidget* window = gtk_application_window_new(app);
    gtk_window_set_title(GTK_WINDOW(window), title);
    gtk_window_set_default_size(GTK_WINDOW(window), 640, 420);

    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
    gtk_widget_set_margin_start(box, 10);
    gtk_widget_set_margin_end(box, 10);
    gtk_widget_set_margin_top(box, 10);
    gtk_widget_set_margin_bottom(box, 10);

    GtkWidget* entry = gtk_entry_new();
    gtk_entry_set_placeholder_text(GTK_ENTRY(entry), "Subject");
    gtk_widget_set_name(entry, "subject");

    GtkWidget* view = gtk_text_view_new();
    gtk_text_view_set_wrap_mode(GTK_TEXT_VIEW(view), GTK_WRAP_WORD_CHAR);
    gtk_text_buffer_set_text(gtk_text_view_get_buffer(GTK_TEXT_VIEW(view)), initial, -1);
    gtk_widget_set_name(view, "body");
    GtkWidget* scroll = gtk_scrolled_window_new();
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scroll), view);
    gtk_widget_set_vexpand(scroll, TRUE);

    gtk_box_append(GTK_BOX(box), entry);
    gtk_box_append(GTK_BOX(box), scroll);
    gtk_window_set_child(GTK_WINDOW(window), box);

    /* The capture phase sees every key, also those the focused text view then consumes. */
    GtkEventController* keys = gtk_event_controller_key_new();
    gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);
    g_signal_connect(keys, "key-pressed", G_CALLBACK(on_key), NULL);
    gtk_widget_add_controller(window, keys);

    gtk_widget_grab_focus(strcmp(focus, "entry") == 0 ? entry : view);
    gtk_window_present(GTK_WINDOW(window));
    g_timeout_add(200, announce, NULL);
}

int main(int argc, char** argv) {
    for (int i = 1; i + 1 < argc; i += 2) {
        if (strcmp(argv[i], "--title") == 0)
            title = argv[i + 1];
        else if (strcmp(argv[i], "--focus") == 0)
            focus = argv[i + 1];
        else if (strcmp(argv[i], "--text") == 0)
            initial = argv[i + 1];
        else if (strcmp(argv[i], "--app-id") == 0)
            app_id = argv[i + 1];
        else {
            fprintf(stderr, "unknown option %s\n", argv[i]);
            return 2;
        }
    }
    GtkApplication* app = gtk_application_new(app_id, G_APPLICATION_NON_UNIQUE);
    g_signal_connect(app, "activate", G_CALLBACK(activate), NULL);
    char* args[] = {argv[0], NULL};
    int status = g_application_run(G_APPLICATION(app), 1, args);
    g_object_unref(app);
    return status;
}
