/* A GTK 3 window that the Linux backend takes for Slack (the application id of Slack's Linux
 * package and its program name), for the reply drafting tests on the virtual desktop: a channel
 * header and a few messages as labels, oldest first, above an empty message box.
 *
 *   glimmo-gtk-slack [--message TEXT]...
 *
 * Each --message replaces the built-in conversation with the given messages, in order. Every key
 * press that reaches the window is printed as "key <name> <modifier mask>", and "ready" once the
 * window is shown with the message box focused, as the GTK test editor does. */
#include <gtk/gtk.h>

#include "../gtk-report.h"
#include <stdio.h>
#include <string.h>

#define MAX_MESSAGES 32

static const char* builtin[] = {
    "Ana Ruiz: Morning! The pilot with the Lisbon office starts next week.",
    "Ana Ruiz: I still need someone to present the onboarding flow on Monday.",
    "Ben Okafor: I can help with the slides but not the demo itself.",
    "Ana Ruiz: Could you take the demo on Monday at 10?",
};
static const char* messages[MAX_MESSAGES];
static int message_count = 0;

static GtkWidget* message_label(const char* text) {
    GtkWidget* label = gtk_label_new(text);
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
    return label;
}

static void activate(GtkApplication* app, gpointer data) {
    (void)data;
    GtkWidget* window = gtk_application_window_new(app);
    gtk_window_set_title(GTK_WINDOW(window), "general - Glimmo test workspace - Slack");
    gtk_window_set_default_size(GTK_WINDOW(window), 640, 420);

    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 8);
    gtk_container_set_border_width(GTK_CONTAINER(box), 12);

    GtkWidget* header = gtk_label_new(NULL);
    gtk_label_set_markup(GTK_LABEL(header), "<b>#general</b>");
    gtk_label_set_xalign(GTK_LABEL(header), 0);
    gtk_box_pack_start(GTK_BOX(box), header, FALSE, FALSE, 0);

    GtkWidget* history = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
    gtk_widget_set_vexpand(history, TRUE);
    for (int i = 0; i < message_count; i++)
        gtk_box_pack_start(GTK_BOX(history), message_label(messages[i]), FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(box), history, TRUE, TRUE, 0);

    GtkWidget* input = gtk_text_view_new();
    gtk_text_view_set_wrap_mode(GTK_TEXT_VIEW(input), GTK_WRAP_WORD_CHAR);
    gtk_widget_set_name(input, "message");
    gtk_widget_set_size_request(input, -1, 60);
    atk_object_set_name(gtk_widget_get_accessible(input), "Message #general");
    GtkWidget* frame = gtk_frame_new(NULL);
    gtk_container_add(GTK_CONTAINER(frame), input);
    gtk_box_pack_start(GTK_BOX(box), frame, FALSE, FALSE, 0);

    gtk_container_add(GTK_CONTAINER(window), box);
    g_signal_connect(window, "key-press-event", G_CALLBACK(on_key), NULL);
    gtk_widget_show_all(window);
    gtk_widget_grab_focus(input);
    gtk_window_present(GTK_WINDOW(window));
    g_timeout_add(200, announce, NULL);
}

int main(int argc, char** argv) {
    for (int i = 1; i < argc; i++) {
        if (strcmp(argv[i], "--message") == 0 && i + 1 < argc && message_count < MAX_MESSAGES) {
            messages[message_count++] = argv[++i];
        } else {
            fprintf(stderr, "unknown option %s\n", argv[i]);
            return 2;
        }
    }
    if (message_count == 0) {
        for (size_t i = 0; i < sizeof builtin / sizeof *builtin; i++) messages[i] = builtin[i];
        message_count = (int)(sizeof builtin / sizeof *builtin);
    }
    /* Slack's Linux package: WM_CLASS "slack", "Slack"; its Flatpak id names the application. */
    g_set_prgname("slack");
    GtkApplication* app = gtk_application_new("com.slack.Slack", G_APPLICATION_NON_UNIQUE);
    g_signal_connect(app, "activate", G_CALLBACK(activate), NULL);
    char* args[] = {argv[0], NULL};
    int status = g_application_run(G_APPLICATION(app), 1, args);
    g_object_unref(app);
    return status;
}
