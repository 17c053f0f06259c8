<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Area</name>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>CPU</source>
        <translation>CPU</translation>
    </message>
    <message>
        <source>CPU Relative</source>
        <translation>CPU relativ</translation>
    </message>
    <message>
        <source>GPU</source>
        <translation>GPU</translation>
    </message>
    <message>
        <source>Battery</source>
        <translation>Akku</translation>
    </message>
    <message>
        <source>Enclosure</source>
        <translation>Gehäuse</translation>
    </message>
    <message>
        <source>Hard Drive</source>
        <translation>Laufwerke</translation>
    </message>
    <message>
        <source>LCD</source>
        <translation>Bildschirm</translation>
    </message>
    <message>
        <source>Logic Board</source>
        <translation>Hauptplatine</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Arbeitsspeicher</translation>
    </message>
    <message>
        <source>Northbridge</source>
        <translation>Northbridge</translation>
    </message>
    <message>
        <source>Optical Drive</source>
        <translation>Optisches Laufwerk</translation>
    </message>
    <message>
        <source>Palm Rest</source>
        <translation>Handballenauflage</translation>
    </message>
    <message>
        <source>PCI</source>
        <translation>PCI</translation>
    </message>
    <message>
        <source>Power Supply</source>
        <translation>Netzteil</translation>
    </message>
    <message>
        <source>Thunderbolt</source>
        <translation>Thunderbolt</translation>
    </message>
    <message>
        <source>Wireless</source>
        <translation>WLAN</translation>
    </message>
</context>
<context>
    <name>DesktopProgram</name>
    <message>
        <source>Some of your preferences could not be read.</source>
        <translation>Einige Ihrer Einstellungen konnten nicht gelesen werden.</translation>
    </message>
    <message>
        <source>No notification service answers on this desktop.</source>
        <translation>Auf diesem Desktop antwortet kein Benachrichtigungsdienst.</translation>
    </message>
</context>
<context>
    <name>Menus</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
</context>
<context>
    <name>Promotion</name>
    <message>
        <source>Meet Vantix</source>
        <translation>Lernen Sie Vantix kennen</translation>
    </message>
    <message>
        <source>All of Calorivo, and the rest of your machine with it.</source>
        <translation>Alles aus Calorivo, und der Rest Ihres Rechners dazu.</translation>
    </message>
    <message>
        <source>Learn More</source>
        <translation>Mehr erfahren</translation>
    </message>
    <message>
        <source>Do not show this again</source>
        <translation>Nicht mehr anzeigen</translation>
    </message>
    <message>
        <source>Upgrade to Vantix</source>
        <translation>Auf Vantix umsteigen</translation>
    </message>
    <message>
        <source>Vantix is the larger program by the makers of Calorivo. When you start it, Calorivo steps aside.</source>
        <translation>Vantix ist das größere Programm von den Machern von Calorivo. Wenn Sie es starten, macht Calorivo ihm Platz.</translation>
    </message>
    <message>
        <source>Download Vantix</source>
        <translation>Vantix herunterladen</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Nicht jetzt</translation>
    </message>
</context>
<context>
    <name>SuppressibleBox</name>
    <message>
        <source>Do not ask again</source>
        <translation>Nicht mehr fragen</translation>
    </message>
</context>
<context>
    <name>calorivo::AboutWindow</name>
    <message>
        <source>About Calorivo</source>
        <translation>Über Calorivo</translation>
    </message>
    <message>
        <source>Calorivo</source>
        <translation>Calorivo</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Watches the temperatures, fans and drives of this computer.</source>
        <translation>Beobachtet die Temperaturen, Lüfter und Laufwerke dieses Computers.</translation>
    </message>
    <message>
        <source>© 2026 The Calorivo developers</source>
        <translation>© 2026 Die Calorivo-Entwickler</translation>
    </message>
    <message>
        <source>Free software under the MIT License. It comes without any warranty.</source>
        <translation>Freie Software unter der MIT-Lizenz, ohne jede Gewährleistung.</translation>
    </message>
    <message>
        <source>NAMES OF TRANSLATORS</source>
        <extracomment>Your names, separated by commas.</extracomment>
        <translation>den Calorivo-Entwicklern</translation>
    </message>
    <message>
        <source>Translated by %1</source>
        <translation>Übersetzt von %1</translation>
    </message>
    <message>
        <source>Thank you for using Calorivo.</source>
        <translation>Danke, dass Sie Calorivo verwenden.</translation>
    </message>
</context>
<context>
    <name>calorivo::Actions</name>
    <message>
        <source>Show &amp;Main Window</source>
        <translation>&amp;Hauptfenster zeigen</translation>
    </message>
    <message>
        <source>&amp;Preferences…</source>
        <translation>&amp;Einstellungen…</translation>
    </message>
    <message>
        <source>&amp;Reset Maximums</source>
        <translation>Höchstwerte &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Find Sensor…</source>
        <translation>Sensor &amp;suchen…</translation>
    </message>
    <message>
        <source>Show &amp;Details</source>
        <translation>&amp;Einzelheiten zeigen</translation>
    </message>
    <message>
        <source>&amp;Celsius</source>
        <translation>&amp;Celsius</translation>
    </message>
    <message>
        <source>&amp;Fahrenheit</source>
        <translation>&amp;Fahrenheit</translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <translation>Fenster &amp;schließen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Quit Calorivo</source>
        <translation>Calorivo &amp;beenden</translation>
    </message>
    <message>
        <source>&amp;About Calorivo</source>
        <translation>&amp;Über Calorivo</translation>
    </message>
    <message>
        <source>Calorivo</source>
        <translation>Calorivo</translation>
    </message>
    <message>
        <source>Calorivo &amp;Help</source>
        <translation>Calorivo-&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Send Feedback…</source>
        <translation>&amp;Rückmeldung senden…</translation>
    </message>
    <message>
        <source>&amp;Rate Calorivo</source>
        <translation>Calorivo be&amp;werten</translation>
    </message>
    <message>
        <source>&amp;Follow the Makers</source>
        <translation>Den Machern &amp;folgen</translation>
    </message>
    <message>
        <source>&amp;More from the Makers</source>
        <translation>&amp;Mehr von den Machern</translation>
    </message>
    <message>
        <source>Subscribe to the &amp;Newsletter</source>
        <translation>&amp;Newsletter abonnieren</translation>
    </message>
    <message>
        <source>&amp;Open Log File</source>
        <translation>&amp;Protokolldatei öffnen</translation>
    </message>
    <message>
        <source>Show Log File in &amp;Folder</source>
        <translation>Protokolldatei im &amp;Ordner zeigen</translation>
    </message>
</context>
<context>
    <name>calorivo::AlertsPane</name>
    <message>
        <source>Limit for a &amp;single sensor:</source>
        <translation>Grenze für einen &amp;einzelnen Sensor:</translation>
    </message>
    <message>
        <source>Limit for the &amp;average:</source>
        <translation>Grenze für den &amp;Durchschnitt:</translation>
    </message>
    <message>
        <source>&amp;Notify me of temperatures above their limits</source>
        <translation>Bei Temperaturen über ihrer Grenze &amp;benachrichtigen</translation>
    </message>
    <message>
        <source>Limits are in degrees Celsius. A sensor that stays above its limit is reported again after ten minutes.</source>
        <translation>Grenzen sind in Grad Celsius. Ein Sensor, der über seiner Grenze bleibt, wird nach zehn Minuten wieder gemeldet.</translation>
    </message>
    <message>
        <source>Notifications stay until they are &amp;clicked</source>
        <translation>Benachrichtigungen bleiben, bis sie &amp;angeklickt werden</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Send a &amp;Test Notification</source>
        <translation>&amp;Testbenachrichtigung senden</translation>
    </message>
    <message>
        <source>Not available: this program cannot send notifications here.</source>
        <translation>Nicht verfügbar: Hier kann dieses Programm keine Benachrichtigungen senden.</translation>
    </message>
    <message>
        <source>Notifications are shown by the desktop.</source>
        <translation>Benachrichtigungen zeigt der Desktop an.</translation>
    </message>
</context>
<context>
    <name>calorivo::AreaList</name>
    <message>
        <source>Areas</source>
        <translation>Bereiche</translation>
    </message>
</context>
<context>
    <name>calorivo::AveragesView</name>
    <message>
        <source>Average</source>
        <translation>Durchschnitt</translation>
    </message>
    <message>
        <source>CPU Average</source>
        <translation>CPU-Durchschnitt</translation>
    </message>
    <message>
        <source>The average of all sensors of the computer</source>
        <translation>Der Durchschnitt aller Sensoren des Computers</translation>
    </message>
    <message>
        <source>The average of the sensors of the CPU</source>
        <translation>Der Durchschnitt der Sensoren der CPU</translation>
    </message>
</context>
<context>
    <name>calorivo::DBusNotifications</name>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Notifications work</source>
        <translation>Benachrichtigungen funktionieren</translation>
    </message>
    <message>
        <source>This is how a temperature above its limit is announced.</source>
        <translation>So wird eine Temperatur über ihrer Grenze gemeldet.</translation>
    </message>
</context>
<context>
    <name>calorivo::DetailsPanel</name>
    <message>
        <source>Simulated Mac</source>
        <translation>Simulierter Mac</translation>
    </message>
    <message>
        <source>Keys file</source>
        <translation>Schlüsseldatei</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>No data</source>
        <translation>Keine Daten</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Decoded</source>
        <translation>Dekodiert</translation>
    </message>
    <message>
        <source>Reading</source>
        <translation>Messwert</translation>
    </message>
    <message>
        <source>%1, shown as %2</source>
        <translation>%1, angezeigt als %2</translation>
    </message>
    <message>
        <source>%1, which no sensor means: shown as N/A</source>
        <translation>%1, was kein Sensor meint: angezeigt als N/A</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Schlüssel</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Content</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Named by</source>
        <translation>Benannt durch</translation>
    </message>
    <message>
        <source>Put into its area by</source>
        <translation>Dem Bereich zugeordnet durch</translation>
    </message>
    <message>
        <source>Area</source>
        <translation>Bereich</translation>
    </message>
    <message>
        <source>Not shown</source>
        <translation>Nicht angezeigt</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Seriennummer</translation>
    </message>
    <message>
        <source>The drive itself, which measures its temperature (SMART)</source>
        <translation>Das Laufwerk selbst, das seine Temperatur misst (SMART)</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Einzelheiten</translation>
    </message>
    <message>
        <source>The kernel&apos;s own reading (%1)</source>
        <translation>Messung des Kernels (%1)</translation>
    </message>
    <message>
        <source>The drive&apos;s health log</source>
        <translation>Das Zustandsprotokoll des Laufwerks</translation>
    </message>
    <message>
        <source>The service UDisks2, which asks the drive</source>
        <translation>Der Dienst UDisks2, der das Laufwerk befragt</translation>
    </message>
    <message>
        <source>The drive is asleep and is not woken: this is its value from before.</source>
        <translation>Das Laufwerk schläft und wird nicht geweckt: Dies ist sein Wert von vorher.</translation>
    </message>
    <message>
        <source>No temperature</source>
        <translation>Keine Temperatur</translation>
    </message>
</context>
<context>
    <name>calorivo::EmptyState</name>
    <message>
        <source>Clear Filter</source>
        <translation>Filter löschen</translation>
    </message>
    <message>
        <source>A keys file is a dump of the controller&apos;s keys, one on each line. Lines count whose key begins with T, whose type is [sp78], and whose bytes give a temperature.</source>
        <translation>Eine Schlüsseldatei enthält die Schlüssel des Controllers, einen je Zeile. Es zählen die Zeilen, deren Schlüssel mit T beginnt, deren Typ [sp78] ist und deren Bytes eine Temperatur ergeben.</translation>
    </message>
    <message>
        <source>The simulated Mac normally has dozens of sensors. Start the program again, or look at the options with: calorivo --help</source>
        <translation>Der simulierte Mac hat sonst Dutzende von Sensoren. Starten Sie das Programm neu, oder sehen Sie die Optionen an mit: calorivo --help</translation>
    </message>
    <message>
        <source>The controller answered, but none of its keys gives a temperature now. It may be busy: start the program again. If it stays so, load the module anew: sudo modprobe -r applesmc &amp;&amp; sudo modprobe applesmc</source>
        <translation>Der Controller hat geantwortet, aber keiner seiner Schlüssel ergibt zurzeit eine Temperatur. Vielleicht ist er beschäftigt: Starten Sie das Programm neu. Bleibt es dabei, laden Sie das Modul neu: sudo modprobe -r applesmc &amp;&amp; sudo modprobe applesmc</translation>
    </message>
    <message>
        <source>Linux shows a sensor once the module for its chip is loaded.

• Processors: sudo modprobe coretemp (Intel) or sudo modprobe k10temp (AMD)
• Intel Macs: sudo modprobe applesmc
• Other chips: install lm-sensors, run sudo sensors-detect and load the modules that it names

Then start the program again. A virtual machine mostly has no sensors; to look around all the same, start: calorivo --simulate</source>
        <translation>Linux zeigt einen Sensor, sobald das Modul für seinen Chip geladen ist.

• Prozessoren: sudo modprobe coretemp (Intel) oder sudo modprobe k10temp (AMD)
• Intel-Macs: sudo modprobe applesmc
• Andere Chips: lm-sensors installieren, sudo sensors-detect ausführen und die dort genannten Module laden

Starten Sie danach das Programm neu. Eine virtuelle Maschine hat meist keine Sensoren; um sich trotzdem umzusehen, starten Sie: calorivo --simulate</translation>
    </message>
    <message>
        <source>No temperature sensors were found</source>
        <translation>Es wurden keine Temperatursensoren gefunden</translation>
    </message>
    <message>
        <source>The keys file holds no temperatures</source>
        <translation>Die Schlüsseldatei enthält keine Temperaturen</translation>
    </message>
    <message>
        <source>The keys file “%1” holds no temperatures</source>
        <translation>Die Schlüsseldatei „%1“ enthält keine Temperaturen</translation>
    </message>
    <message>
        <source>No sensors in “%1”</source>
        <translation>Keine Sensoren in „%1“</translation>
    </message>
    <message>
        <source>Choose another area at the left.</source>
        <translation>Wählen Sie links einen anderen Bereich.</translation>
    </message>
    <message>
        <source>No sensor in “%1” matches “%2”</source>
        <translation>Kein Sensor in „%1“ passt zu „%2“</translation>
    </message>
</context>
<context>
    <name>calorivo::FanTable</name>
    <message>
        <source>Fans</source>
        <translation>Lüfter</translation>
    </message>
</context>
<context>
    <name>calorivo::FanTableModel</name>
    <message>
        <source>%1, from %2 to %3</source>
        <translation>%1, von %2 bis %3</translation>
    </message>
    <message>
        <source>Fan</source>
        <translation>Lüfter</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Drehzahl</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Pegel</translation>
    </message>
    <message>
        <source>Minimum</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>Maximum</source>
        <translation>Maximum</translation>
    </message>
</context>
<context>
    <name>calorivo::GeneralPane</name>
    <message>
        <source>Start when I &amp;log in</source>
        <translation>Beim &amp;Anmelden starten</translation>
    </message>
    <message>
        <source>Start &amp;hidden</source>
        <translation>&amp;Verborgen starten</translation>
    </message>
    <message>
        <source>In a &amp;window, among the running programs</source>
        <translation>In einem &amp;Fenster, unter den laufenden Programmen</translation>
    </message>
    <message>
        <source>In the &amp;menu bar only</source>
        <translation>Nur in der &amp;Menüleiste</translation>
    </message>
    <message>
        <source>Calorivo runs:</source>
        <translation>Calorivo läuft:</translation>
    </message>
    <message>
        <source>A change takes effect when Calorivo is started the next time. In the menu bar only, it also starts when you log in.</source>
        <translation>Eine Änderung gilt ab dem nächsten Start von Calorivo. Nur in der Menüleiste startet es auch, wenn Sie sich anmelden.</translation>
    </message>
    <message>
        <source>Those of the desktop</source>
        <translation>Die des Desktops</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>&amp;Colors:</source>
        <translation>Far&amp;ben:</translation>
    </message>
</context>
<context>
    <name>calorivo::LogPane</name>
    <message>
        <source>&amp;Write every check to a log file</source>
        <translation>Jede Prüfung in eine Protokolldatei &amp;schreiben</translation>
    </message>
    <message>
        <source>&amp;Temperatures</source>
        <translation>&amp;Temperaturen</translation>
    </message>
    <message>
        <source>The log holds:</source>
        <translation>Das Protokoll enthält:</translation>
    </message>
    <message>
        <source>Log temperatures</source>
        <translation>Temperaturen protokollieren</translation>
    </message>
    <message>
        <source>&amp;Fan speeds</source>
        <translation>&amp;Lüfterdrehzahlen</translation>
    </message>
    <message>
        <source>Log fan speeds</source>
        <translation>Lüfterdrehzahlen protokollieren</translation>
    </message>
    <message>
        <source>Marks at temperatures &amp;above their limits</source>
        <translation>&amp;Marken bei Temperaturen über ihrer Grenze</translation>
    </message>
    <message>
        <source>Log marks at temperatures above their limits</source>
        <translation>Marken bei Temperaturen über ihrer Grenze protokollieren</translation>
    </message>
    <message>
        <source>&amp;Keep adding to the same file</source>
        <translation>Immer an &amp;dieselbe Datei anhängen</translation>
    </message>
    <message>
        <source>Otherwise the file is begun anew, and what it held is lost, whenever Calorivo starts and whenever what the log holds changes.</source>
        <translation>Sonst wird die Datei neu begonnen, und ihr Inhalt geht verloren, wenn Calorivo startet und wenn sich ändert, was das Protokoll enthält.</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>&amp;Log file:</source>
        <translation>&amp;Protokolldatei:</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>&amp;Öffnen</translation>
    </message>
    <message>
        <source>Open the log file</source>
        <translation>Die Protokolldatei öffnen</translation>
    </message>
    <message>
        <source>&amp;Show in Folder</source>
        <translation>Im Ordner &amp;zeigen</translation>
    </message>
    <message>
        <source>Show the log file in its folder</source>
        <translation>Die Protokolldatei in ihrem Ordner zeigen</translation>
    </message>
    <message>
        <source>Not available: this program cannot open files here.</source>
        <translation>Nicht verfügbar: Hier kann dieses Programm keine Dateien öffnen.</translation>
    </message>
    <message>
        <source>There is no log file, since there is no folder for documents.</source>
        <translation>Es gibt keine Protokolldatei, weil es keinen Ordner für Dokumente gibt.</translation>
    </message>
</context>
<context>
    <name>calorivo::MainWindow</name>
    <message>
        <source>Select a sensor to see where its value comes from.</source>
        <translation>Wählen Sie einen Sensor aus, um zu sehen, woher sein Wert kommt.</translation>
    </message>
    <message>
        <source>Nothing is known about this sensor.</source>
        <translation>Über diesen Sensor ist nichts bekannt.</translation>
    </message>
</context>
<context>
    <name>calorivo::MainWindowControls</name>
    <message>
        <source>Details</source>
        <translation>Einzelheiten</translation>
    </message>
    <message>
        <source>Filter sensors</source>
        <translation>Sensoren filtern</translation>
    </message>
    <message>
        <source>Filter by name or key</source>
        <translation>Nach Name oder Schlüssel filtern</translation>
    </message>
    <message>
        <source>Unit of temperatures</source>
        <translation>Einheit der Temperaturen</translation>
    </message>
    <message>
        <source>Reset Maximums</source>
        <translation>Höchstwerte zurücksetzen</translation>
    </message>
    <message>
        <source>Forget the highest temperatures recorded so far</source>
        <translation>Die bisher höchsten Temperaturen vergessen</translation>
    </message>
    <message>
        <source>Show where the value of the selected sensor comes from</source>
        <translation>Zeigen, woher der Wert des ausgewählten Sensors kommt</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>calorivo::MainWindowStatus</name>
    <message>
        <source>Last check: %1</source>
        <translation>Letzte Prüfung: %1</translation>
    </message>
    <message>
        <source>HH:mm:ss</source>
        <extracomment>The time of day, as QDateTime::toString takes it.</extracomment>
        <translation>HH:mm:ss</translation>
    </message>
    <message>
        <source>Apple SMC</source>
        <translation>Apple-SMC</translation>
    </message>
    <message>
        <source>Simulated Mac</source>
        <translation>Simulierter Mac</translation>
    </message>
    <message>
        <source>Keys file %1</source>
        <translation>Schlüsseldatei %1</translation>
    </message>
    <message>
        <source>No sensors</source>
        <translation>Keine Sensoren</translation>
    </message>
</context>
<context>
    <name>calorivo::MainWindowSummary</name>
    <message>
        <source>Average speed of the fans</source>
        <translation>Durchschnittliche Drehzahl der Lüfter</translation>
    </message>
    <message>
        <source>Average of all fans: %1</source>
        <translation>Durchschnitt aller Lüfter: %1</translation>
    </message>
</context>
<context>
    <name>calorivo::MenuBarPane</name>
    <message>
        <source>Shown now:</source>
        <translation>Jetzt angezeigt:</translation>
    </message>
    <message>
        <source>&amp;First temperature:</source>
        <translation>&amp;Erste Temperatur:</translation>
    </message>
    <message>
        <source>Sensor of the first temperature</source>
        <translation>Sensor der ersten Temperatur</translation>
    </message>
    <message>
        <source>Not available</source>
        <translation>Nicht verfügbar</translation>
    </message>
    <message>
        <source>&amp;Second temperature:</source>
        <translation>&amp;Zweite Temperatur:</translation>
    </message>
    <message>
        <source>Sensor of the second temperature</source>
        <translation>Sensor der zweiten Temperatur</translation>
    </message>
    <message>
        <source>Fan s&amp;peed:</source>
        <translation>&amp;Lüfterdrehzahl:</translation>
    </message>
    <message>
        <source>Fan</source>
        <translation>Lüfter</translation>
    </message>
    <message>
        <source>No fan</source>
        <translation>Kein Lüfter</translation>
    </message>
    <message>
        <source>The second temperature is shown together with the first one or with the fan speed, never alone.</source>
        <translation>Die zweite Temperatur wird zusammen mit der ersten oder mit der Lüfterdrehzahl gezeigt, nie allein.</translation>
    </message>
    <message>
        <source>Where there is room</source>
        <translation>Wo Platz ist</translation>
    </message>
    <message>
        <source>Beside the icon</source>
        <translation>Neben dem Symbol</translation>
    </message>
    <message>
        <source>Inside the icon</source>
        <translation>Im Symbol</translation>
    </message>
    <message>
        <source>Show the &amp;readings:</source>
        <translation>&amp;Messwerte zeigen:</translation>
    </message>
    <message>
        <source>Many panels show no text beside an icon. There the digits of the first reading can take the icon&apos;s place.</source>
        <translation>Viele Leisten zeigen keinen Text neben einem Symbol. Dort können die Ziffern des ersten Messwerts den Platz des Symbols einnehmen.</translation>
    </message>
    <message>
        <source>S&amp;maller font</source>
        <translation>Kleinere Schri&amp;ft</translation>
    </message>
    <message>
        <source>S&amp;horter titles, without units</source>
        <translation>&amp;Kürzere Titel, ohne Einheiten</translation>
    </message>
    <message>
        <source>Show the &amp;icon</source>
        <translation>&amp;Symbol zeigen</translation>
    </message>
    <message>
        <source>Without readings beside it, the icon is the only way to reach Calorivo.</source>
        <translation>Ohne Messwerte daneben ist das Symbol der einzige Weg zu Calorivo.</translation>
    </message>
</context>
<context>
    <name>calorivo::PaneTitlePreview</name>
    <message>
        <source>The icon</source>
        <translation>Das Symbol</translation>
    </message>
</context>
<context>
    <name>calorivo::PreferencesWindow</name>
    <message>
        <source>Temperature</source>
        <translation>Temperatur</translation>
    </message>
    <message>
        <source>Menu Bar</source>
        <translation>Menüleiste</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Warnungen</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Panes</source>
        <translation>Bereiche der Einstellungen</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>calorivo::SensorRowsView</name>
    <message>
        <source>Sensors</source>
        <translation>Sensoren</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Why This Value?</source>
        <translation>Warum dieser Wert?</translation>
    </message>
</context>
<context>
    <name>calorivo::SensorTableModel</name>
    <message>
        <source>%1, highest %2</source>
        <translation>%1, höchstens %2</translation>
    </message>
    <message>
        <source>Sensor</source>
        <translation>Sensor</translation>
    </message>
    <message>
        <source>Temperature</source>
        <translation>Temperatur</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Pegel</translation>
    </message>
</context>
<context>
    <name>calorivo::TemperaturePane</name>
    <message>
        <source>&amp;Celsius (°C)</source>
        <translation>&amp;Celsius (°C)</translation>
    </message>
    <message>
        <source>&amp;Fahrenheit (°F)</source>
        <translation>&amp;Fahrenheit (°F)</translation>
    </message>
    <message>
        <source>Show temperatures in:</source>
        <translation>Temperaturen zeigen in:</translation>
    </message>
    <message>
        <source>Seconds between two checks</source>
        <translation>Sekunden zwischen zwei Prüfungen</translation>
    </message>
    <message>
        <source> s</source>
        <comment>seconds</comment>
        <translation> s</translation>
    </message>
    <message>
        <source>Check &amp;every:</source>
        <translation>&amp;Prüfen alle:</translation>
    </message>
    <message>
        <source>A short interval follows quick changes. A long one leaves the processor asleep for longer and saves power.</source>
        <translation>Ein kurzer Abstand folgt schnellen Änderungen. Ein langer lässt den Prozessor länger schlafen und spart Strom.</translation>
    </message>
    <message>
        <source>Check the temperatures of &amp;drives</source>
        <translation>Temperaturen der &amp;Laufwerke prüfen</translation>
    </message>
    <message>
        <source>&amp;Reset</source>
        <translation>&amp;Zurücksetzen</translation>
    </message>
    <message>
        <source>Reset the recorded maximums</source>
        <translation>Die aufgezeichneten Höchstwerte zurücksetzen</translation>
    </message>
    <message>
        <source>Recorded maximums:</source>
        <translation>Aufgezeichnete Höchstwerte:</translation>
    </message>
    <message>
        <source>The mark on each bar of the main window, at the highest temperature seen, begins anew.</source>
        <translation>Die Marke auf jedem Balken des Hauptfensters, bei der höchsten gesehenen Temperatur, beginnt von vorn.</translation>
    </message>
    <message>
        <source>Drives appear beside the sensors, among the choices for the menu bar and in the log.</source>
        <translation>Laufwerke erscheinen neben den Sensoren, in der Auswahl für die Menüleiste und im Protokoll.</translation>
    </message>
    <message>
        <source>Not available: no drive of this computer tells its temperature.</source>
        <translation>Nicht verfügbar: Kein Laufwerk dieses Computers nennt seine Temperatur.</translation>
    </message>
</context>
</TS>
