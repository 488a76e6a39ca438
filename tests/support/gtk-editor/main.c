/* A small GTK 3 window for the tests on the virtual desktop: a multi-paragraph text view, a
 * single-line entry and a password entry, as any real application would show them.
 *
 *   glimmo-gtk-editor [--title TITLE] [--focus text|entry|password] [--text TEXT]
 *                     [--text-file PATH] [--app-id ID] [--prgname NAME]
 *
 * --text sets the text view's content ("\n" separates paragraphs), --text-file the same from a
 * file, --app-id the GTK application id, --prgname the program name (WM_CLASS). Every key
 * press that reaches the window is printed on standard output as "key <name> <modifier mask>",
 * so a test can tell which keys the application saw; "ready" is printed once the window is shown
 * and focused. Whenever the text view's caret moves, "caret X Y W H" gives the box of the
 * character just before it, in the X server's pixels on the root window as the screen shows it
 * at any GDK_SCALE.
 *
 * Two clipboard helpers for the tests, each its own process like any other application:
 *   --own-clipboard TEXT   also puts an item on the clipboard that offers TEXT and a 24x16
 *                          PNG image, and serves it until it quits
 *   --print-clipboard      prints what another application finds on the clipboard
 *                          ("targets ...", "text ...", "image WxH") and quits */
#include <gtk/gtk.h>

#include "../gtk-report.h"
#include <stdio.h>
#include <string.h>

static const char* title = "Glimmo test editor";
static const char* focus = "text";
static const char* initial =
    "The first paragraph stays as it is.\n"
    "\n"
    "Second paragraph with emoji \xF0\x9F\x98\x80 and CJK \xE4\xBD\xA0\xE5\xA5\xBD text.\n"
    "\n"
    "The last paragraph.";
static const char* app_id = "org.glimmo.TestEditor";
static const char* clip_text = NULL;

enum { CLIP_TEXT, CLIP_IMAGE };

static void clip_get(GtkClipboard* cb, GtkSelectionData* sel, guint info, gpointer data) {
    (void)cb;
    (void)data;
    if (info == CLIP_TEXT) {
        gtk_selection_data_set_text(sel, clip_text, -1);
        return;
    }
    GdkPixbuf* pixbuf = gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, 24, 16);
    gdk_pixbuf_fill(pixbuf, 0x80611aff);
    gtk_selection_data_set_pixbuf(sel, pixbuf);
    g_object_unref(pixbuf);
}

static void clip_clear(GtkClipboard* cb, gpointer data) {
    (void)cb;
    (void)data;
}

static void own_clipboard(void) {
    GtkTargetList* list = gtk_target_list_new(NULL, 0);
    gtk_target_list_add_text_targets(list, CLIP_TEXT);
    gtk_target_list_add_image_targets(list, CLIP_IMAGE, TRUE);
    int n = 0;
    GtkTargetEntry* targets = gtk_target_table_new_from_list(list, &n);
    gtk_clipboard_set_with_data(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD), targets, n, clip_get,
                                clip_clear, NULL);
    gtk_target_table_free(targets, n);
    gtk_target_list_unref(list);
}

static int print_clipboard(void) {
    GtkClipboard* cb = gtk_clipboard_get(GDK_SELECTION_CLIPBOARD);
    GdkAtom* targets = NULL;
    int n = 0;
    printf("targets");
    if (gtk_clipboard_wait_for_targets(cb, &targets, &n)) {
        for (int i = 0; i < n; i++) {
            char* name = gdk_atom_name(targets[i]);
            printf(" %s", name);
            g_free(name);
        }
        g_free(targets);
    }
    printf("\n");
    char* text = gtk_clipboard_wait_for_text(cb);
    printf("text %s\n", text ? text : "");
    g_free(text);
    GdkPixbuf* image = gtk_clipboard_wait_for_image(cb);
    if (image) {
        printf("image %dx%d\n", gdk_pixbuf_get_width(image), gdk_pixbuf_get_height(image));
        g_object_unref(image);
    }
    fflush(stdout);
    return 0;
}

static guint caret_report = 0;

static gboolean report_caret(gpointer data) {
    GtkTextView* view = GTK_TEXT_VIEW(data);
    caret_report = 0;
    GtkTextBuffer* buffer = gtk_text_view_get_buffer(view);
    GtkTextIter iter;
    gtk_text_buffer_get_iter_at_mark(buffer, &iter, gtk_text_buffer_get_insert(buffer));
    gtk_text_iter_backward_char(&iter);
    GdkRectangle r;
    gtk_text_view_get_iter_location(view, &iter, &r);
    int x = 0, y = 0, ox = 0, oy = 0;
    gtk_text_view_buffer_to_window_coords(view, GTK_TEXT_WINDOW_TEXT, r.x, r.y, &x, &y);
    GdkWindow* window = gtk_text_view_get_window(view, GTK_TEXT_WINDOW_TEXT);
    if (!window) return G_SOURCE_REMOVE;
    gdk_window_get_origin(window, &ox, &oy);
    const int scale = gdk_window_get_scale_factor(window);
    printf("caret %d %d %d %d\n", (ox + x) * scale, (oy + y) * scale, r.width * scale,
           r.height * scale);
    fflush(stdout);
    return G_SOURCE_REMOVE;
}

/* After the layout has settled: the caret's place is only known then. */
static void caret_moved(GtkWidget* view) {
    if (!caret_report) caret_report = g_timeout_add(50, report_caret, view);
}

static void on_mark_set(GtkTextBuffer* buffer, GtkTextIter* iter, GtkTextMark* mark,
                        gpointer view) {
    (void)iter;
    if (mark == gtk_text_buffer_get_insert(buffer)) caret_moved(view);
}

static void on_changed(GtkTextBuffer* buffer, gpointer view) {
    (void)buffer;
    caret_moved(view);
}

static void activate(GtkApplication* app, gpointer data) {
    (void)data;
    GtkWidget* window = gtk_application_window_new(app);
    gtk_window_set_title(GTK_WINDOW(window), title);
    gtk_window_set_default_size(GTK_WINDOW(window), 640, 420);

    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
    gtk_container_set_border_width(GTK_CONTAINER(box), 10);

    GtkWidget* entry = gtk_entry_new();
    gtk_entry_set_placeholder_text(GTK_ENTRY(entry), "Subject");
    gtk_widget_set_name(entry, "subject");

    GtkWidget* password = gtk_entry_new();
    gtk_entry_set_visibility(GTK_ENTRY(password), FALSE);
    gtk_entry_set_input_purpose(GTK_ENTRY(password), GTK_INPUT_PURPOSE_PASSWORD);
    gtk_widget_set_name(password, "password");

    GtkWidget* view = gtk_text_view_new();
    gtk_text_view_set_wrap_mode(GTK_TEXT_VIEW(view), GTK_WRAP_WORD_CHAR);
    gtk_text_buffer_set_text(gtk_text_view_get_buffer(GTK_TEXT_VIEW(view)), initial, -1);
    gtk_widget_set_name(view, "body");
    GtkWidget* scroll = gtk_scrolled_window_new(NULL, NULL);
    gtk_container_add(GTK_CONTAINER(scroll), view);
    gtk_widget_set_vexpand(scroll, TRUE);

    gtk_box_pack_start(GTK_BOX(box), entry, FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(box), password, FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(box), scroll, TRUE, TRUE, 0);
    gtk_container_add(GTK_CONTAINER(window), box);
    g_signal_connect(window, "key-press-event", G_CALLBACK(on_key), NULL);
    GtkTextBuffer* buffer = gtk_text_view_get_buffer(GTK_TEXT_VIEW(view));
    g_signal_connect(buffer, "mark-set", G_CALLBACK(on_mark_set), view);
    g_signal_connect(buffer, "changed", G_CALLBACK(on_changed), view);

    gtk_widget_show_all(window);
    GtkWidget* target = view;
    if (strcmp(focus, "entry") == 0) target = entry;
    if (strcmp(focus, "password") == 0) target = password;
    gtk_widget_grab_focus(target);
    if (clip_text) own_clipboard();
    gtk_window_present(GTK_WINDOW(window));
    g_timeout_add(200, announce, NULL);
}

int main(int argc, char** argv) {
    const char* prgname = NULL;
    if (argc == 2 && strcmp(argv[1], "--print-clipboard") == 0) {
        gtk_init(&argc, &argv);
        return print_clipboard();
    }
    for (int i = 1; i + 1 < argc; i += 2) {
        if (strcmp(argv[i], "--title") == 0)
            title = argv[i + 1];
        else if (strcmp(argv[i], "--focus") == 0)
            focus = argv[i + 1];
        else if (strcmp(argv[i], "--text") == 0)
            initial = argv[i + 1];
        else if (strcmp(argv[i], "--text-file") == 0) {
            /* Long texts exceed what one command-line argument may hold. */
            gchar* contents = NULL;
            if (!g_file_get_contents(argv[i + 1], &contents, NULL, NULL)) {
                fprintf(stderr, "cannot read %s\n", argv[i + 1]);
                return 2;
            }
            initial = contents;
        }
        else if (strcmp(argv[i], "--app-id") == 0)
            app_id = argv[i + 1];
        else if (strcmp(argv[i], "--prgname") == 0)
            prgname = argv[i + 1];
        else if (strcmp(argv[i], "--own-clipboard") == 0)
            clip_text = argv[i + 1];
        else {
            fprintf(stderr, "unknown option %s\n", argv[i]);
            return 2;
        }
    }
    if (prgname) g_set_prgname(prgname);
    GtkApplication* app = gtk_application_new(app_id, G_APPLICATION_NON_UNIQUE);
    g_signal_connect(app, "activate", G_CALLBACK(activate), NULL);
    char* args[] = {argv[0], NULL};
    int status = g_application_run(G_APPLICATION(app), 1, args);
    g_object_unref(app);
    return status;
}
