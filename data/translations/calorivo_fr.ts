<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>Area</name>
    <message>
        <source>All</source>
        <translation>Tous</translation>
    </message>
    <message>
        <source>CPU</source>
        <translation>CPU</translation>
    </message>
    <message>
        <source>CPU Relative</source>
        <translation>CPU relatif</translation>
    </message>
    <message>
        <source>GPU</source>
        <translation>GPU</translation>
    </message>
    <message>
        <source>Battery</source>
        <translation>Batterie</translation>
    </message>
    <message>
        <source>Enclosure</source>
        <translation>Boîtier</translation>
    </message>
    <message>
        <source>Hard Drive</source>
        <translation>Disques</translation>
    </message>
    <message>
        <source>LCD</source>
        <translation>Écran</translation>
    </message>
    <message>
        <source>Logic Board</source>
        <translation>Carte mère</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Mémoire</translation>
    </message>
    <message>
        <source>Northbridge</source>
        <translation>Northbridge</translation>
    </message>
    <message>
        <source>Optical Drive</source>
        <translation>Lecteur optique</translation>
    </message>
    <message>
        <source>Palm Rest</source>
        <translation>Repose-poignets</translation>
    </message>
    <message>
        <source>PCI</source>
        <translation>PCI</translation>
    </message>
    <message>
        <source>Power Supply</source>
        <translation>Alimentation</translation>
    </message>
    <message>
        <source>Thunderbolt</source>
        <translation>Thunderbolt</translation>
    </message>
    <message>
        <source>Wireless</source>
        <translation>Sans fil</translation>
    </message>
</context>
<context>
    <name>DesktopProgram</name>
    <message>
        <source>Some of your preferences could not be read.</source>
        <translation>Certaines de vos préférences n’ont pas pu être lues.</translation>
    </message>
    <message>
        <source>No notification service answers on this desktop.</source>
        <translation>Aucun service de notification ne répond sur ce bureau.</translation>
    </message>
</context>
<context>
    <name>Menus</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>É&amp;dition</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Affichage</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>Aid&amp;e</translation>
    </message>
</context>
<context>
    <name>Promotion</name>
    <message>
        <source>Meet Vantix</source>
        <translation>Découvrez Vantix</translation>
    </message>
    <message>
        <source>All of Calorivo, and the rest of your machine with it.</source>
        <translation>Tout Calorivo, et le reste de votre machine en plus.</translation>
    </message>
    <message>
        <source>Learn More</source>
        <translation>En savoir plus</translation>
    </message>
    <message>
        <source>Do not show this again</source>
        <translation>Ne plus afficher</translation>
    </message>
    <message>
        <source>Upgrade to Vantix</source>
        <translation>Passer à Vantix</translation>
    </message>
    <message>
        <source>Vantix is the larger program by the makers of Calorivo. When you start it, Calorivo steps aside.</source>
        <translation>Vantix est le grand frère de Calorivo, par les mêmes auteurs. Lorsque vous le lancez, Calorivo lui cède la place.</translation>
    </message>
    <message>
        <source>Download Vantix</source>
        <translation>Télécharger Vantix</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Plus tard</translation>
    </message>
</context>
<context>
    <name>SuppressibleBox</name>
    <message>
        <source>Do not ask again</source>
        <translation>Ne plus demander</translation>
    </message>
</context>
<context>
    <name>calorivo::AboutWindow</name>
    <message>
        <source>About Calorivo</source>
        <translation>À propos de Calorivo</translation>
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
        <translation>Surveille les températures, les ventilateurs et les disques de cet ordinateur.</translation>
    </message>
    <message>
        <source>© 2026 The Calorivo developers</source>
        <translation>© 2026 Les développeurs de Calorivo</translation>
    </message>
    <message>
        <source>Free software under the MIT License. It comes without any warranty.</source>
        <translation>Logiciel libre sous licence MIT, sans aucune garantie.</translation>
    </message>
    <message>
        <source>NAMES OF TRANSLATORS</source>
        <extracomment>Your names, separated by commas.</extracomment>
        <translation>les développeurs de Calorivo</translation>
    </message>
    <message>
        <source>Translated by %1</source>
        <translation>Traduit par %1</translation>
    </message>
    <message>
        <source>Thank you for using Calorivo.</source>
        <translation>Merci d’utiliser Calorivo.</translation>
    </message>
</context>
<context>
    <name>calorivo::Actions</name>
    <message>
        <source>Show &amp;Main Window</source>
        <translation>Afficher la &amp;fenêtre principale</translation>
    </message>
    <message>
        <source>&amp;Preferences…</source>
        <translation>&amp;Préférences…</translation>
    </message>
    <message>
        <source>&amp;Reset Maximums</source>
        <translation>Réinitialiser les &amp;maximums</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>&amp;Find Sensor…</source>
        <translation>&amp;Rechercher un capteur…</translation>
    </message>
    <message>
        <source>Show &amp;Details</source>
        <translation>Afficher les &amp;détails</translation>
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
        <translation>&amp;Fermer la fenêtre</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>&amp;Quit Calorivo</source>
        <translation>&amp;Quitter Calorivo</translation>
    </message>
    <message>
        <source>&amp;About Calorivo</source>
        <translation>À &amp;propos de Calorivo</translation>
    </message>
    <message>
        <source>Calorivo</source>
        <translation>Calorivo</translation>
    </message>
    <message>
        <source>Calorivo &amp;Help</source>
        <translation>&amp;Aide de Calorivo</translation>
    </message>
    <message>
        <source>&amp;Send Feedback…</source>
        <translation>&amp;Envoyer un commentaire…</translation>
    </message>
    <message>
        <source>&amp;Rate Calorivo</source>
        <translation>&amp;Noter Calorivo</translation>
    </message>
    <message>
        <source>&amp;Follow the Makers</source>
        <translation>&amp;Suivre les auteurs</translation>
    </message>
    <message>
        <source>&amp;More from the Makers</source>
        <translation>Autres lo&amp;giciels des auteurs</translation>
    </message>
    <message>
        <source>Subscribe to the &amp;Newsletter</source>
        <translation>S’abonner à la &amp;lettre d’information</translation>
    </message>
    <message>
        <source>&amp;Open Log File</source>
        <translation>&amp;Ouvrir le fichier journal</translation>
    </message>
    <message>
        <source>Show Log File in &amp;Folder</source>
        <translation>Afficher le journal dans son &amp;dossier</translation>
    </message>
</context>
<context>
    <name>calorivo::AlertsPane</name>
    <message>
        <source>Limit for a &amp;single sensor:</source>
        <translation>Limite pour &amp;un seul capteur&#xa0;:</translation>
    </message>
    <message>
        <source>Limit for the &amp;average:</source>
        <translation>Limite pour la &amp;moyenne&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;Notify me of temperatures above their limits</source>
        <translation>Me &amp;prévenir des températures au-dessus de leur limite</translation>
    </message>
    <message>
        <source>Limits are in degrees Celsius. A sensor that stays above its limit is reported again after ten minutes.</source>
        <translation>Les limites sont en degrés Celsius. Un capteur qui reste au-dessus de sa limite est signalé de nouveau au bout de dix minutes.</translation>
    </message>
    <message>
        <source>Notifications stay until they are &amp;clicked</source>
        <translation>Les notifications restent jusqu’à ce qu’on &amp;clique dessus</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Send a &amp;Test Notification</source>
        <translation>Envoyer une notification d’&amp;essai</translation>
    </message>
    <message>
        <source>Not available: this program cannot send notifications here.</source>
        <translation>Indisponible&#xa0;: ce programme ne peut pas envoyer de notifications ici.</translation>
    </message>
    <message>
        <source>Notifications are shown by the desktop.</source>
        <translation>Les notifications sont affichées par le bureau.</translation>
    </message>
</context>
<context>
    <name>calorivo::AreaList</name>
    <message>
        <source>Areas</source>
        <translation>Zones</translation>
    </message>
</context>
<context>
    <name>calorivo::AveragesView</name>
    <message>
        <source>Average</source>
        <translation>Moyenne</translation>
    </message>
    <message>
        <source>CPU Average</source>
        <translation>Moyenne CPU</translation>
    </message>
    <message>
        <source>The average of all sensors of the computer</source>
        <translation>La moyenne de tous les capteurs de l’ordinateur</translation>
    </message>
    <message>
        <source>The average of the sensors of the CPU</source>
        <translation>La moyenne des capteurs de la CPU</translation>
    </message>
</context>
<context>
    <name>calorivo::DBusNotifications</name>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Notifications work</source>
        <translation>Les notifications fonctionnent</translation>
    </message>
    <message>
        <source>This is how a temperature above its limit is announced.</source>
        <translation>Une température au-dessus de sa limite est annoncée ainsi.</translation>
    </message>
</context>
<context>
    <name>calorivo::DetailsPanel</name>
    <message>
        <source>Simulated Mac</source>
        <translation>Mac simulé</translation>
    </message>
    <message>
        <source>Keys file</source>
        <translation>Fichier de clés</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Octets</translation>
    </message>
    <message>
        <source>No data</source>
        <translation>Aucune donnée</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>Decoded</source>
        <translation>Décodé</translation>
    </message>
    <message>
        <source>Reading</source>
        <translation>Mesure</translation>
    </message>
    <message>
        <source>%1, shown as %2</source>
        <translation>%1, affiché comme %2</translation>
    </message>
    <message>
        <source>%1, which no sensor means: shown as N/A</source>
        <translation>%1, ce qu’aucun capteur ne veut dire&#xa0;: affiché comme N/A</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Clé</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Périphérique</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Fichier</translation>
    </message>
    <message>
        <source>Content</source>
        <translation>Contenu</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Remarque</translation>
    </message>
    <message>
        <source>Named by</source>
        <translation>Nommé par</translation>
    </message>
    <message>
        <source>Put into its area by</source>
        <translation>Rangé dans sa zone par</translation>
    </message>
    <message>
        <source>Area</source>
        <translation>Zone</translation>
    </message>
    <message>
        <source>Not shown</source>
        <translation>Non affiché</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Numéro de série</translation>
    </message>
    <message>
        <source>The drive itself, which measures its temperature (SMART)</source>
        <translation>Le disque lui-même, qui mesure sa température (SMART)</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Détails</translation>
    </message>
    <message>
        <source>The kernel&apos;s own reading (%1)</source>
        <translation>Mesure du noyau (%1)</translation>
    </message>
    <message>
        <source>The drive&apos;s health log</source>
        <translation>Le journal d’état du disque</translation>
    </message>
    <message>
        <source>The service UDisks2, which asks the drive</source>
        <translation>Le service UDisks2, qui interroge le disque</translation>
    </message>
    <message>
        <source>The drive is asleep and is not woken: this is its value from before.</source>
        <translation>Le disque est en veille et n’est pas réveillé : c’est sa valeur d’avant.</translation>
    </message>
    <message>
        <source>No temperature</source>
        <translation>Pas de température</translation>
    </message>
</context>
<context>
    <name>calorivo::EmptyState</name>
    <message>
        <source>Clear Filter</source>
        <translation>Effacer le filtre</translation>
    </message>
    <message>
        <source>A keys file is a dump of the controller&apos;s keys, one on each line. Lines count whose key begins with T, whose type is [sp78], and whose bytes give a temperature.</source>
        <translation>Un fichier de clés contient les clés du contrôleur, une par ligne. Comptent les lignes dont la clé commence par T, dont le type est [sp78] et dont les octets donnent une température.</translation>
    </message>
    <message>
        <source>The simulated Mac normally has dozens of sensors. Start the program again, or look at the options with: calorivo --help</source>
        <translation>Le Mac simulé a normalement des dizaines de capteurs. Relancez le programme, ou consultez les options avec&#xa0;: calorivo --help</translation>
    </message>
    <message>
        <source>The controller answered, but none of its keys gives a temperature now. It may be busy: start the program again. If it stays so, load the module anew: sudo modprobe -r applesmc &amp;&amp; sudo modprobe applesmc</source>
        <translation>Le contrôleur a répondu, mais aucune de ses clés ne donne de température pour l’instant. Il est peut-être occupé&#xa0;: relancez le programme. Si cela persiste, rechargez le module&#xa0;: sudo modprobe -r applesmc &amp;&amp; sudo modprobe applesmc</translation>
    </message>
    <message>
        <source>Linux shows a sensor once the module for its chip is loaded.

• Processors: sudo modprobe coretemp (Intel) or sudo modprobe k10temp (AMD)
• Intel Macs: sudo modprobe applesmc
• Other chips: install lm-sensors, run sudo sensors-detect and load the modules that it names

Then start the program again. A virtual machine mostly has no sensors; to look around all the same, start: calorivo --simulate</source>
        <translation>Linux affiche un capteur dès que le module de sa puce est chargé.

• Processeurs&#xa0;: sudo modprobe coretemp (Intel) ou sudo modprobe k10temp (AMD)
• Mac Intel&#xa0;: sudo modprobe applesmc
• Autres puces&#xa0;: installez lm-sensors, exécutez sudo sensors-detect et chargez les modules qu’il indique

Relancez ensuite le programme. Une machine virtuelle n’a généralement pas de capteurs&#x202f;; pour découvrir le programme malgré tout, lancez&#xa0;: calorivo --simulate</translation>
    </message>
    <message>
        <source>No temperature sensors were found</source>
        <translation>Aucun capteur de température n’a été trouvé</translation>
    </message>
    <message>
        <source>The keys file holds no temperatures</source>
        <translation>Le fichier de clés ne contient aucune température</translation>
    </message>
    <message>
        <source>The keys file “%1” holds no temperatures</source>
        <translation>Le fichier de clés «&#xa0;%1&#xa0;» ne contient aucune température</translation>
    </message>
    <message>
        <source>No sensors in “%1”</source>
        <translation>Aucun capteur dans «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>Choose another area at the left.</source>
        <translation>Choisissez une autre zone à gauche.</translation>
    </message>
    <message>
        <source>No sensor in “%1” matches “%2”</source>
        <translation>Aucun capteur de «&#xa0;%1&#xa0;» ne correspond à «&#xa0;%2&#xa0;»</translation>
    </message>
</context>
<context>
    <name>calorivo::FanTable</name>
    <message>
        <source>Fans</source>
        <translation>Ventilateurs</translation>
    </message>
</context>
<context>
    <name>calorivo::FanTableModel</name>
    <message>
        <source>%1, from %2 to %3</source>
        <translation>%1, de %2 à %3</translation>
    </message>
    <message>
        <source>Fan</source>
        <translation>Ventilateur</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Vitesse</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Niveau</translation>
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
        <translation>&amp;Lancer à l’ouverture de session</translation>
    </message>
    <message>
        <source>Start &amp;hidden</source>
        <translation>Lancer &amp;masqué</translation>
    </message>
    <message>
        <source>In a &amp;window, among the running programs</source>
        <translation>Dans une &amp;fenêtre, parmi les programmes ouverts</translation>
    </message>
    <message>
        <source>In the &amp;menu bar only</source>
        <translation>Dans la &amp;barre des menus seulement</translation>
    </message>
    <message>
        <source>Calorivo runs:</source>
        <translation>Calorivo s’exécute&#xa0;:</translation>
    </message>
    <message>
        <source>A change takes effect when Calorivo is started the next time. In the menu bar only, it also starts when you log in.</source>
        <translation>Un changement prend effet au prochain lancement de Calorivo. Dans la barre des menus seulement, il se lance aussi à l’ouverture de session.</translation>
    </message>
    <message>
        <source>Those of the desktop</source>
        <translation>Celles du bureau</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Clair</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Sombre</translation>
    </message>
    <message>
        <source>&amp;Colors:</source>
        <translation>&amp;Couleurs&#xa0;:</translation>
    </message>
</context>
<context>
    <name>calorivo::LogPane</name>
    <message>
        <source>&amp;Write every check to a log file</source>
        <translation>&amp;Écrire chaque relevé dans un fichier journal</translation>
    </message>
    <message>
        <source>&amp;Temperatures</source>
        <translation>&amp;Températures</translation>
    </message>
    <message>
        <source>The log holds:</source>
        <translation>Le journal contient&#xa0;:</translation>
    </message>
    <message>
        <source>Log temperatures</source>
        <translation>Journaliser les températures</translation>
    </message>
    <message>
        <source>&amp;Fan speeds</source>
        <translation>&amp;Vitesses des ventilateurs</translation>
    </message>
    <message>
        <source>Log fan speeds</source>
        <translation>Journaliser les vitesses des ventilateurs</translation>
    </message>
    <message>
        <source>Marks at temperatures &amp;above their limits</source>
        <translation>&amp;Marques aux températures au-dessus de leur limite</translation>
    </message>
    <message>
        <source>Log marks at temperatures above their limits</source>
        <translation>Journaliser des marques aux températures au-dessus de leur limite</translation>
    </message>
    <message>
        <source>&amp;Keep adding to the same file</source>
        <translation>A&amp;jouter toujours au même fichier</translation>
    </message>
    <message>
        <source>Otherwise the file is begun anew, and what it held is lost, whenever Calorivo starts and whenever what the log holds changes.</source>
        <translation>Sinon, le fichier est recommencé et son contenu perdu à chaque lancement de Calorivo et à chaque changement de ce que contient le journal.</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Aucun</translation>
    </message>
    <message>
        <source>&amp;Log file:</source>
        <translation>&amp;Fichier journal&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>&amp;Ouvrir</translation>
    </message>
    <message>
        <source>Open the log file</source>
        <translation>Ouvrir le fichier journal</translation>
    </message>
    <message>
        <source>&amp;Show in Folder</source>
        <translation>Afficher dans le &amp;dossier</translation>
    </message>
    <message>
        <source>Show the log file in its folder</source>
        <translation>Afficher le fichier journal dans son dossier</translation>
    </message>
    <message>
        <source>Not available: this program cannot open files here.</source>
        <translation>Indisponible&#xa0;: ce programme ne peut pas ouvrir de fichiers ici.</translation>
    </message>
    <message>
        <source>There is no log file, since there is no folder for documents.</source>
        <translation>Il n’y a pas de fichier journal, faute de dossier pour les documents.</translation>
    </message>
</context>
<context>
    <name>calorivo::MainWindow</name>
    <message>
        <source>Select a sensor to see where its value comes from.</source>
        <translation>Sélectionnez un capteur pour voir d’où vient sa valeur.</translation>
    </message>
    <message>
        <source>Nothing is known about this sensor.</source>
        <translation>On ne sait rien de ce capteur.</translation>
    </message>
</context>
<context>
    <name>calorivo::MainWindowControls</name>
    <message>
        <source>Details</source>
        <translation>Détails</translation>
    </message>
    <message>
        <source>Filter sensors</source>
        <translation>Filtrer les capteurs</translation>
    </message>
    <message>
        <source>Filter by name or key</source>
        <translation>Filtrer par nom ou par clé</translation>
    </message>
    <message>
        <source>Unit of temperatures</source>
        <translation>Unité des températures</translation>
    </message>
    <message>
        <source>Reset Maximums</source>
        <translation>Réinitialiser les maximums</translation>
    </message>
    <message>
        <source>Forget the highest temperatures recorded so far</source>
        <translation>Oublier les températures maximales relevées jusqu’ici</translation>
    </message>
    <message>
        <source>Show where the value of the selected sensor comes from</source>
        <translation>Montrer d’où vient la valeur du capteur sélectionné</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Préférences</translation>
    </message>
</context>
<context>
    <name>calorivo::MainWindowStatus</name>
    <message>
        <source>Last check: %1</source>
        <translation>Dernier relevé&#xa0;: %1</translation>
    </message>
    <message>
        <source>HH:mm:ss</source>
        <extracomment>The time of day, as QDateTime::toString takes it.</extracomment>
        <translation>HH:mm:ss</translation>
    </message>
    <message>
        <source>Apple SMC</source>
        <translation>SMC d’Apple</translation>
    </message>
    <message>
        <source>Simulated Mac</source>
        <translation>Mac simulé</translation>
    </message>
    <message>
        <source>Keys file %1</source>
        <translation>Fichier de clés %1</translation>
    </message>
    <message>
        <source>No sensors</source>
        <translation>Aucun capteur</translation>
    </message>
</context>
<context>
    <name>calorivo::MainWindowSummary</name>
    <message>
        <source>Average speed of the fans</source>
        <translation>Vitesse moyenne des ventilateurs</translation>
    </message>
    <message>
        <source>Average of all fans: %1</source>
        <translation>Moyenne de tous les ventilateurs&#xa0;: %1</translation>
    </message>
</context>
<context>
    <name>calorivo::MenuBarPane</name>
    <message>
        <source>Shown now:</source>
        <translation>Affiché à présent&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;First temperature:</source>
        <translation>&amp;Première température&#xa0;:</translation>
    </message>
    <message>
        <source>Sensor of the first temperature</source>
        <translation>Capteur de la première température</translation>
    </message>
    <message>
        <source>Not available</source>
        <translation>Indisponible</translation>
    </message>
    <message>
        <source>&amp;Second temperature:</source>
        <translation>&amp;Deuxième température&#xa0;:</translation>
    </message>
    <message>
        <source>Sensor of the second temperature</source>
        <translation>Capteur de la deuxième température</translation>
    </message>
    <message>
        <source>Fan s&amp;peed:</source>
        <translation>&amp;Vitesse du ventilateur&#xa0;:</translation>
    </message>
    <message>
        <source>Fan</source>
        <translation>Ventilateur</translation>
    </message>
    <message>
        <source>No fan</source>
        <translation>Aucun ventilateur</translation>
    </message>
    <message>
        <source>The second temperature is shown together with the first one or with the fan speed, never alone.</source>
        <translation>La deuxième température est affichée avec la première ou avec la vitesse du ventilateur, jamais seule.</translation>
    </message>
    <message>
        <source>Where there is room</source>
        <translation>Là où il y a de la place</translation>
    </message>
    <message>
        <source>Beside the icon</source>
        <translation>À côté de l’icône</translation>
    </message>
    <message>
        <source>Inside the icon</source>
        <translation>Dans l’icône</translation>
    </message>
    <message>
        <source>Show the &amp;readings:</source>
        <translation>Afficher les &amp;mesures&#xa0;:</translation>
    </message>
    <message>
        <source>Many panels show no text beside an icon. There the digits of the first reading can take the icon&apos;s place.</source>
        <translation>Beaucoup de tableaux de bord n’affichent pas de texte à côté d’une icône. Les chiffres de la première mesure peuvent alors prendre la place de l’icône.</translation>
    </message>
    <message>
        <source>S&amp;maller font</source>
        <translation>Police plus pe&amp;tite</translation>
    </message>
    <message>
        <source>S&amp;horter titles, without units</source>
        <translation>Titres plus &amp;courts, sans unités</translation>
    </message>
    <message>
        <source>Show the &amp;icon</source>
        <translation>Afficher l’&amp;icône</translation>
    </message>
    <message>
        <source>Without readings beside it, the icon is the only way to reach Calorivo.</source>
        <translation>Sans mesures à côté d’elle, l’icône est le seul accès à Calorivo.</translation>
    </message>
</context>
<context>
    <name>calorivo::PaneTitlePreview</name>
    <message>
        <source>The icon</source>
        <translation>L’icône</translation>
    </message>
</context>
<context>
    <name>calorivo::PreferencesWindow</name>
    <message>
        <source>Temperature</source>
        <translation>Température</translation>
    </message>
    <message>
        <source>Menu Bar</source>
        <translation>Barre des menus</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Alertes</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Journal</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Général</translation>
    </message>
    <message>
        <source>Panes</source>
        <translation>Volets</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Préférences</translation>
    </message>
</context>
<context>
    <name>calorivo::SensorRowsView</name>
    <message>
        <source>Sensors</source>
        <translation>Capteurs</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Why This Value?</source>
        <translation>Pourquoi cette valeur&#xa0;?</translation>
    </message>
</context>
<context>
    <name>calorivo::SensorTableModel</name>
    <message>
        <source>%1, highest %2</source>
        <translation>%1, maximum %2</translation>
    </message>
    <message>
        <source>Sensor</source>
        <translation>Capteur</translation>
    </message>
    <message>
        <source>Temperature</source>
        <translation>Température</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Niveau</translation>
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
        <translation>Afficher les températures en&#xa0;:</translation>
    </message>
    <message>
        <source>Seconds between two checks</source>
        <translation>Secondes entre deux relevés</translation>
    </message>
    <message>
        <source> s</source>
        <comment>seconds</comment>
        <translation> s</translation>
    </message>
    <message>
        <source>Check &amp;every:</source>
        <translation>&amp;Relever toutes les&#xa0;:</translation>
    </message>
    <message>
        <source>A short interval follows quick changes. A long one leaves the processor asleep for longer and saves power.</source>
        <translation>Un intervalle court suit les changements rapides. Un intervalle long laisse le processeur dormir davantage et économise l’énergie.</translation>
    </message>
    <message>
        <source>Check the temperatures of &amp;drives</source>
        <translation>Relever la température des &amp;disques</translation>
    </message>
    <message>
        <source>&amp;Reset</source>
        <translation>Réi&amp;nitialiser</translation>
    </message>
    <message>
        <source>Reset the recorded maximums</source>
        <translation>Réinitialiser les maximums relevés</translation>
    </message>
    <message>
        <source>Recorded maximums:</source>
        <translation>Maximums relevés&#xa0;:</translation>
    </message>
    <message>
        <source>The mark on each bar of the main window, at the highest temperature seen, begins anew.</source>
        <translation>La marque de chaque barre de la fenêtre principale, à la plus haute température vue, repart de zéro.</translation>
    </message>
    <message>
        <source>Drives appear beside the sensors, among the choices for the menu bar and in the log.</source>
        <translation>Les disques apparaissent à côté des capteurs, parmi les choix de la barre des menus et dans le journal.</translation>
    </message>
    <message>
        <source>Not available: no drive of this computer tells its temperature.</source>
        <translation>Indisponible&#xa0;: aucun disque de cet ordinateur n’indique sa température.</translation>
    </message>
</context>
</TS>
